#include "addin/pages/script/MacroEditor.h"

#include "addin/pages/script/FindBar.h"
#include "addin/pages/script/MacroEdit.h"
#include "qtglue/Texts.h"

#include <algorithm>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

namespace zn {

MacroEditor::MacroEditor(QWidget* parent)
    : QWidget(parent)
    , m_edit(new MacroEdit(this))
    , m_findBar(new FindBar(*m_edit, this))
    , m_status(new QLabel(this))
    , m_checker([this] { return m_edit->plainText(); },
          [this](const std::vector<TemplateProblem>* problems) { showProblems(problems); })
{
    m_edit->setObjectName("macro");
    m_status->setObjectName("macroStatus");
    m_status->setWordWrap(true);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFocusProxy(m_edit);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_edit, 1);
    column->addWidget(m_findBar);
    column->addWidget(m_status);

    addShortcut(QKeySequence::Find, &MacroEditor::openFind);
    addShortcut(QKeySequence::FindNext, &MacroEditor::findNext);
    addShortcut(QKeySequence::FindPrevious, &MacroEditor::findPrevious);
    addShortcut(Qt::Key_F8, &MacroEditor::goToNextProblem);
    connect(m_edit, &QPlainTextEdit::textChanged, this, [this] { m_checker.sourceChanged(); });
    connect(m_edit, &QPlainTextEdit::cursorPositionChanged, this, [this] { updateStatus(); });
    setTexts(englishEditorTexts());
    m_checker.sourceChanged();
}

MacroEditor::~MacroEditor() = default;

void MacroEditor::addShortcut(const QKeySequence& keys, void (MacroEditor::*action)())
{
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, action);
}

void MacroEditor::setTexts(const MacroEditorTexts& texts)
{
    m_texts = texts;
    m_edit->setAccessibleDescription(texts.leaveHint);
    m_findBar->setTexts(texts);
    updateStatus();
}

void MacroEditor::openFind() { m_findBar->open(); }
void MacroEditor::findNext() { m_findBar->find(); }
void MacroEditor::findPrevious() { m_findBar->find(QTextDocument::FindBackward); }

void MacroEditor::goToNextProblem() { m_edit->goToNextProblem(); }

void MacroEditor::showProblems(const std::vector<TemplateProblem>* problems)
{
    m_state = problems ? State::Checked : State::Failed;
    m_problems = problems ? *problems : std::vector<TemplateProblem>();
    m_edit->setProblems(m_problems);
    updateStatus();
}

void MacroEditor::updateStatus()
{
    if (m_state != State::Checked) {
        m_status->setText(m_state == State::Failed ? m_texts.notChecked : m_texts.checking);
        return;
    }
    if (m_problems.empty()) {
        m_status->setText(m_texts.noProblems);
        return;
    }
    const int line = m_edit->textCursor().blockNumber() + 1;
    const auto here = std::ranges::find_if(m_problems, [line](const TemplateProblem& one) { return one.line == line; });
    const TemplateProblem& told = here == m_problems.end() ? m_problems.front() : *here;
    QString text = m_texts.problem.arg(told.line).arg(shown(told.message));
    if (m_problems.size() > 1)
        text += QLatin1Char(' ') + m_texts.severalProblems.arg(m_problems.size());
    m_status->setText(text);
}

} // namespace zn
