#pragma once

#include "addin/libraries/tokenctrl/TokenCtrl.h"

#include <dlfcn.h>
#include <memory>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace tokenctrl::test {

inline std::unique_ptr<TokenBox> makeBox()
{
    static void* const library = dlopen(ZN_BIN_DIR "/TokenCtrl.dll", RTLD_NOW | RTLD_LOCAL);
    if (!library)
        throw std::runtime_error(dlerror());
    return std::unique_ptr<TokenBox>(reinterpret_cast<LibraryEntry>(dlsym(library, libraryEntry))(0));
}

/// A dialog with one box of the library, and a line edit behind it.
class BoxWindow : public QWidget, public TokenBoxCallback {
public:
    BoxWindow()
        : box(makeBox())
    {
        auto* layout = new QVBoxLayout(this);
        auto* label = new QLabel("Default &path:");
        place = new QWidget;
        place->setObjectName("outputPath");
        label->setBuddy(place);
        menuButton = new QPushButton(">");
        layout->addWidget(label);
        layout->addWidget(place);
        layout->addWidget(menuButton);
        layout->addStretch();
        box->mvDDX_Control(place);
        edit = place->findChild<QTextEdit*>();
        box->mvAddPattern(u"<Path>", false, u"Source Folder Path", nullptr, u"Source Folder Path");
        box->mvAddPattern(u"<Filename>", false, u"Source File Name", nullptr, u"Source File Name");
        box->mvAddPattern(u"%Number%", true, u"Number", u"Number", u"Variables\\Num - Num\\Number");
        box->mvAddPattern(u"%A&B%", true, u"A&B", u"A&B", u"Variables\\A&B");
        box->mvRegisterCallback(this);
        resize(500, 120);
        show();
        edit->setFocus();
        QTest::qWait(0);
    }

    void OnTokenTextChanged(TokenBox& changed) override
    {
        told.push_back(QString::fromStdU16String(changed.moGetText()));
        if (onChange)
            onChange();
    }

    /// The plain text.
    QString text() const { return QString::fromStdU16String(box->moGetText()); }
    void type(const QString& keys) { QTest::keyClicks(edit, keys); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1)
    {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(edit, key, modifiers);
    }
    /// The document's text with "#" for a token, "|" at the caret.
    QString shown() const
    {
        QString text = edit->document()->toRawText();
        text.insert(edit->textCursor().position(), '|');
        return text.replace(QChar::ObjectReplacementCharacter, '#');
    }

    std::unique_ptr<TokenBox> box;
    QWidget* place = nullptr;
    QPushButton* menuButton = nullptr;
    QTextEdit* edit = nullptr;
    std::vector<QString> told;
    std::function<void()> onChange;
};

} // namespace tokenctrl::test
