#pragma once

#include "addin/pages/frame/Dialog.h"
#include "addin/pages/frame/Page.h"
#include "base/Object.h"

class QComboBox;
class QPushButton;

namespace zn {

class MacroEditor;

/// A task's macro, the CAD version that runs it, and the task's kind: a page of a task of the kind Execute Script, or
/// the content of the dialog "Advanced Scripting Options".
class CScriptPageDlg final : public Page {
public:
    enum class Form { Page, Dialog };

    CScriptPageDlg(PageEnvironment& environment, QWidget* parent, Form form);

    /// An empty macro is shown as the default macro of the kind; a kind that is none of the three as "General".
    void load(const ObjectRef& task) override;
    /// As a page, takes the controls over first; in the dialog that is the part of its OK.
    void save(const ObjectRef& task) override;
    /// Takes the controls over. In the dialog a changed kind replaces the macro by the kind's default.
    void Apply();

private:
    void makeLayout();
    void fillKinds();
    void fillVersions();
    void open();
    void showInsertMenu();
    void reset();
    void kindChosen();
    void replaceByDefault(TaskKind kind);
    void enableReset(bool enable);
    TaskKind selectedKind() const;
    /// The default macro of a kind with the line feed that the system appends. When it can't be had: a box, and the
    /// empty text.
    Text LoadScriptResource(TaskKind kind);
    QString own(int number, const char16_t* defaultText) const;

    Form m_form;
    MacroEditor* m_editor;
    QPushButton* m_insert;
    QPushButton* m_reset = nullptr; ///< in the dialog only
    QComboBox* m_versions;
    QComboBox* m_kinds;

    Text m_script;
    std::int32_t m_version = 0; ///< a year, 0 for the default
    TaskKind m_taskType = TaskKind::General;
};

/// The modal dialog "Advanced Scripting Options" around the page.
class CScriptDlg final : public Dialog {
public:
    CScriptDlg(PageEnvironment& environment, QWidget* parent);

    CScriptPageDlg& page() { return *m_page; }

protected:
    void accept() override;

private:
    CScriptPageDlg* m_page;
};

/// Shows the dialog for a task's macro and, after OK, writes it to the task at once. False when it was cancelled.
/// Raises the host's failures.
bool editScript(PageEnvironment& environment, QWidget* parent, const ObjectRef& task);

} // namespace zn
