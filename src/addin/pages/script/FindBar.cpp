#include "addin/pages/script/FindBar.h"

#include "addin/pages/script/MacroEditorTexts.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

namespace zn {

namespace {

template <class Control> Control* named(Control* control, const char* role)
{
    control->setObjectName(QLatin1String(role));
    return control;
}

} // namespace

FindBar::FindBar(QPlainTextEdit& edit, QWidget* parent)
    : QWidget(parent)
    , m_edit(edit)
    , m_label(new QLabel(this))
    , m_text(named(new QLineEdit(this), "findText"))
    , m_next(named(new QPushButton(this), "findNext"))
    , m_previous(named(new QPushButton(this), "findPrevious"))
    , m_matchCase(named(new QCheckBox(this), "findMatchCase"))
    , m_note(named(new QLabel(this), "findNote"))
    , m_close(named(new QToolButton(this), "findClose"))
{
    setObjectName("findBar");
    m_label->setBuddy(m_text);
    m_text->setClearButtonEnabled(true);
    m_note->setWordWrap(true);
    m_close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    m_close->setAutoRaise(true);
    // Enter finds; it must not press the buttons of a dialog around.
    m_next->setAutoDefault(false);
    m_previous->setAutoDefault(false);

    // Two rows, so that the bar is no wider than the narrowest page.
    auto* text = new QHBoxLayout;
    text->addWidget(m_label);
    text->addWidget(m_text, 1);
    text->addWidget(m_close);
    auto* actions = new QHBoxLayout;
    actions->addWidget(m_next);
    actions->addWidget(m_previous);
    actions->addWidget(m_matchCase);
    actions->addWidget(m_note, 1);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addLayout(text);
    rows->addLayout(actions);

    connect(m_text, &QLineEdit::textEdited, this, [this] { findFrom(m_edit.textCursor().selectionStart(), {}); });
    connect(m_next, &QPushButton::clicked, this, [this] { find(); });
    connect(m_previous, &QPushButton::clicked, this, [this] { find(QTextDocument::FindBackward); });
    connect(m_close, &QToolButton::clicked, this, [this] { close(); });
    hide();
}

void FindBar::setTexts(const MacroEditorTexts& texts)
{
    m_label->setText(texts.find);
    m_next->setText(texts.next);
    m_previous->setText(texts.previous);
    m_matchCase->setText(texts.matchCase);
    m_close->setToolTip(texts.closeFind);
    m_close->setAccessibleName(texts.closeFind);
    m_notFound = texts.notFound;
    m_wrapped = texts.wrapped;
}

void FindBar::open()
{
    const QString selected = m_edit.textCursor().selectedText();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
        m_text->setText(selected);
    m_note->clear();
    QWidget::show();
    m_text->selectAll();
    m_text->setFocus(Qt::ShortcutFocusReason);
}

void FindBar::close()
{
    hide();
    m_edit.setFocus(Qt::OtherFocusReason);
}

void FindBar::find(QTextDocument::FindFlags direction)
{
    if (m_text->text().isEmpty()) {
        open();
        return;
    }
    const QTextCursor caret = m_edit.textCursor();
    findFrom(
        direction.testFlag(QTextDocument::FindBackward) ? caret.selectionStart() : caret.selectionEnd(), direction);
}

void FindBar::findFrom(int position, QTextDocument::FindFlags direction)
{
    const QString text = m_text->text();
    if (text.isEmpty()) {
        m_note->clear();
        return;
    }
    if (m_matchCase->isChecked())
        direction |= QTextDocument::FindCaseSensitively;
    QTextDocument* document = m_edit.document();
    QTextCursor hit = document->find(text, position, direction);
    if (!hit.isNull()) {
        show(hit, {});
        return;
    }
    const bool backward = direction.testFlag(QTextDocument::FindBackward);
    hit = document->find(text, backward ? document->characterCount() - 1 : 0, direction);
    show(hit, hit.isNull() ? m_notFound : m_wrapped);
}

void FindBar::show(const QTextCursor& hit, const QString& note)
{
    m_note->setText(note);
    if (!hit.isNull())
        m_edit.setTextCursor(hit);
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        close();
    else if (isEnter)
        find(event->modifiers().testFlag(Qt::ShiftModifier) ? QTextDocument::FindBackward : QTextDocument::FindFlags());
    else
        QWidget::keyPressEvent(event);
}

} // namespace zn
