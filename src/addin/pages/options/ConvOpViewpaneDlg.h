#pragma once

#include "addin/pages/options/ConvOpDlg.h"

class QRadioButton;

namespace zn {

/// The settings of Viewpane.
class CConvOpViewpaneDlg final : public CConvOpDlg {
public:
    explicit CConvOpViewpaneDlg(OptionSetting setting);

private:
    void SyncControls() override;
    void makeControls(OptionWindow& window) override;
    void onMotionStudies();
    void chooseConfigurations(bool all);

    QCheckBox* m_motionStudies = nullptr;
    QRadioButton* m_everyConfiguration = nullptr;
    QRadioButton* m_lastConfiguration = nullptr;
    QCheckBox* m_recalculate = nullptr;
};

} // namespace zn
