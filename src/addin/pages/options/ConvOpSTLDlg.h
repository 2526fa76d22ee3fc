#pragma once

#include "addin/pages/options/ConvOpDlg.h"

class QRadioButton;

namespace zn {

/// The settings of STL.
class CConvOpSTLDlg final : public CConvOpDlg {
public:
    explicit CConvOpSTLDlg(OptionSetting setting);

private:
    void SyncControls() override;
    void makeControls(OptionWindow& window) override;

    QRadioButton* m_binary = nullptr;
    QRadioButton* m_ascii = nullptr;
    QRadioButton* m_coarse = nullptr;
    QRadioButton* m_fine = nullptr;
    QCheckBox* m_oneFile = nullptr;
    QCheckBox* m_interferences = nullptr;
};

} // namespace zn
