#pragma once

#include "addin/pages/frame/Page.h"

class QCheckBox;
class QLineEdit;

namespace zn {

/// The first page of every task: whether it appears as a command in the explorer, with its title and its status bar
/// text. The host keeps the two texts as the task's menu entry, which the setup flow writes.
class CMenuCommandDlg final : public Page {
public:
    CMenuCommandDlg(PageEnvironment& environment, QWidget* parent, TaskKind kind);

    void load(const ObjectRef& task) override;
    /// Refuses a menu text without characters while the command is shown.
    bool validate() override;
    void save(const ObjectRef& task) override;

    MenuChoice choice() const;

private:
    void loadTexts(const ObjectRef& task);
    void enableTexts();

    TaskKind m_kind;
    QCheckBox* m_show;
    QLineEdit* m_title;
    QLineEdit* m_description;
};

} // namespace zn
