#pragma once

#include "base/Object.h"
#include "base/Text.h"

#include <cstdint>
#include <memory>

class QWidget;

namespace zn {

class CConvOpDlg;
class PageEnvironment;

/// The modal frame around the option dialog of a conversion format. It has a second use without a window: storing the
/// settings of a format that nobody has opened.
class CAdvancedConvOpDlg {
public:
    /// `task` is the definition or the run whose variables the settings are. `label` is the format's, such as
    /// "IGES (*.igs)"; it may be empty where no window opens. `parent` is the window over which the frame and the
    /// messages appear; null for none. Without `showAsChild` a frame that opens stays empty.
    CAdvancedConvOpDlg(PageEnvironment& environment, ObjectRef task, std::uint32_t formatCode, Text label,
        QWidget* parent, bool showAsChild);

    /// Runs the frame until the user closes it. OK writes the settings to the task at once. True on OK, also when the
    /// writing failed, which the user was told.
    bool DoModal();
    /// Stores all settings of the format, with their stored values or those of a new task, and makes no window. False
    /// after a failure, which was shown in a message box. Nothing to do for a format without options.
    bool PersistOptions();

    /// The option dialog of the format, without a window; null for a format without options.
    std::unique_ptr<CConvOpDlg> MakeOptionDialog(std::uint32_t formatCode) const;

private:
    PageEnvironment& m_environment;
    ObjectRef m_task;
    std::uint32_t m_formatCode;
    Text m_label;
    QWidget* m_parent;
    bool m_showAsChild;
};

} // namespace zn
