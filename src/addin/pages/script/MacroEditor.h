#pragma once

#include "addin/pages/script/MacroChecker.h"
#include "addin/pages/script/MacroEditorTexts.h"

#include <QWidget>

class QLabel;

namespace zn {

class FindBar;
class MacroEdit;

/// The macro's text control with its find bar (Ctrl+F, F3, Shift+F3) and, below, a line about its mistakes: the one in
/// the caret's line, or else the first. F8 goes from mistake to mistake. They are only shown, and never keep anybody
/// from saving.
class MacroEditor : public QWidget {
public:
    explicit MacroEditor(QWidget* parent = nullptr);
    ~MacroEditor() override;

    void setTexts(const MacroEditorTexts& texts);
    MacroEdit& edit() { return *m_edit; }

private:
    void addShortcut(const QKeySequence& keys, void (MacroEditor::*action)());
    void openFind();
    void findNext();
    void findPrevious();
    void goToNextProblem();
    void showProblems(const std::vector<TemplateProblem>* problems);
    void updateStatus();

    MacroEditorTexts m_texts;
    MacroEdit* m_edit;
    FindBar* m_findBar;
    QLabel* m_status;
    std::vector<TemplateProblem> m_problems;
    enum class State { Waiting, Checked, Failed } m_state = State::Waiting;
    MacroChecker m_checker;
};

} // namespace zn
