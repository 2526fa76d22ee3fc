#pragma once

#include "addin/pages/frame/Dialog.h"

#include <memory>

class QPushButton;

namespace zn {

class CConvOpDlg;

/// The window of `CAdvancedConvOpDlg`: the option dialog with the buttons below it.
class AdvancedConvOpFrame final : public Dialog {
public:
    /// `child` may be null: then the frame has nothing to set.
    AdvancedConvOpFrame(PageEnvironment& environment, QWidget* parent, const Text& formatLabel,
        const char16_t* helpTopic, std::unique_ptr<CConvOpDlg> child);
    ~AdvancedConvOpFrame() override;

private:
    void placeControls(QWidget* child);
    void resetAll();
    void onOK();

    std::unique_ptr<CConvOpDlg> m_child;
    QPushButton* m_resetAll;
    QPushButton* m_ok;
    QPushButton* m_cancel;
    QPushButton* m_help;
};

} // namespace zn
