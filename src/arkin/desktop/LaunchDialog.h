#pragma once

#include "arkin/desktop/PageDialog.h"

namespace zn::arkin {

class LaunchFlow;

/// The window of a launch: the owner of what the add-in asks by itself, and the frame of the page that it hands over.
class LaunchDialog : public PageDialog {
public:
    /// `launch` outlives the dialog, which closes it in its destructor.
    explicit LaunchDialog(LaunchFlow& launch);
    ~LaunchDialog() override;

    /// Prepares the launch and shows the page that the add-in hands over, if it does. False when the user wants no
    /// run. Raises the add-in's failure.
    bool run();

    void accept() override;

private:
    /// The add-in's dialogs appear over this window, also while it is hidden.
    void centre();

    LaunchFlow& m_launch;
};

} // namespace zn::arkin
