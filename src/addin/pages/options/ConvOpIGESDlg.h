#pragma once

#include "addin/pages/options/ConvOpDlg.h"

namespace zn {

/// The settings of IGES.
class CConvOpIGESDlg final : public CConvOpDlg {
public:
    explicit CConvOpIGESDlg(OptionSetting setting);

private:
    void SyncControls() override;
    void makeControls(OptionWindow& window) override;

    QCheckBox* m_surfaces = nullptr;
    QComboBox* m_surfaceKind = nullptr;
    QCheckBox* m_wireframe = nullptr;
    QComboBox* m_curveKind = nullptr;
};

} // namespace zn
