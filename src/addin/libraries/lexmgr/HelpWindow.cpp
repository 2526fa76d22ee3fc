#include "addin/libraries/lexmgr/HelpWindow.h"

#include "addin/libraries/lexmgr/LexMgr.h"

#include <QDialog>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace lexmgr {

namespace {

constexpr const char* firstPage = "index.html";
constexpr const char* windowName = "helpWindow";
constexpr const char* browserName = "helpText";

class HelpWindow : public QDialog {
public:
    HelpWindow(Library& library, QWidget* parent)
        : QDialog(parent)
        , m_browser(new QTextBrowser(this))
    {
        const auto text = [&library](int id, const char16_t* english) {
            return QString::fromUtf16(library.TSS_internal(id, u"HelpWindow", u"LexMgr", english));
        };
        setObjectName(windowName);
        setWindowTitle(text(1, u"Help"));
        setAttribute(Qt::WA_DeleteOnClose);
        m_browser->setObjectName(browserName);
        m_browser->setAccessibleName(text(2, u"Help text"));

        auto* contents = new QPushButton(text(3, u"&Contents"), this);
        auto* back = new QPushButton(text(4, u"&Back"), this);
        auto* close = new QPushButton(text(5, u"Close"), this);
        contents->setObjectName("contents");
        back->setObjectName("back");
        close->setObjectName("close");
        back->setEnabled(false);
        connect(contents, &QPushButton::clicked, m_browser, [this] { m_browser->setSource(QUrl(firstPage)); });
        connect(back, &QPushButton::clicked, m_browser, &QTextBrowser::backward);
        connect(m_browser, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
        connect(close, &QPushButton::clicked, this, &QDialog::close);

        auto* buttons = new QHBoxLayout;
        buttons->addWidget(contents);
        buttons->addWidget(back);
        buttons->addStretch();
        buttons->addWidget(close);
        auto* rows = new QVBoxLayout(this);
        rows->addWidget(m_browser);
        rows->addLayout(buttons);
        const int line = fontMetrics().lineSpacing();
        resize(36 * line, 26 * line);
    }

    void open(const std::filesystem::path& page)
    {
        m_browser->setSource(QUrl::fromLocalFile(QString::fromStdString(page.string())));
        show();
        raise();
        activateWindow();
    }

private:
    QTextBrowser* m_browser;
};

} // namespace

std::filesystem::path helpPage(const std::filesystem::path& folder, const std::string& topic)
{
    std::error_code ignored;
    const bool plainName = !topic.empty() && topic.find_first_of("/\\") == topic.npos;
    for (const std::string& name : {plainName ? topic + ".html" : std::string(firstPage), std::string(firstPage)}) {
        if (std::filesystem::is_regular_file(folder / name, ignored))
            return folder / name;
    }
    return {};
}

void showHelpPage(Library& library, QWidget* parent, const std::filesystem::path& page)
{
    QWidget* owner = parent ? parent->window() : nullptr;
    auto* window = owner ? dynamic_cast<HelpWindow*>(owner->findChild<QDialog*>(windowName, Qt::FindDirectChildrenOnly))
                         : nullptr;
    if (!window)
        window = new HelpWindow(library, owner);
    window->open(page);
}

} // namespace lexmgr
