#pragma once

#include "addin/pages/frame/Page.h"

#include <span>

class QButtonGroup;
class QCheckBox;

namespace zn {

class LogFolderRow;

/// The last page of a print task: whether a launch shows the dialog, what it selects of the references and in which
/// version, and where the error logs go.
class CFilesDlg final : public Page {
public:
    /// `setting.task` is the task's definition, whose name the log folder bears at first.
    CFilesDlg(PageEnvironment& environment, QWidget* parent, const PageSetting& setting);

    void load(const ObjectRef& task) override;
    void save(const ObjectRef& task) override;

private:
    QWidget* makeChoice(QButtonGroup& group, int box, const char16_t* title, const char* role,
        std::span<const std::pair<const char*, const char16_t*>> buttons, int checked);
    LogFolderRow* makeLogFolder();

    PageSetting m_setting;
    QCheckBox* m_showDialog;
    QButtonGroup* m_autoSelect; ///< 0 none, 1 drawings, 2 parts and assemblies, 3 all
    QButtonGroup* m_version;    ///< 0 as referenced, 1 latest, 2 asked for
    LogFolderRow* m_logFolder;
};

} // namespace zn
