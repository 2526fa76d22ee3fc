#pragma once

#include "addin/pages/options/ConvOpDlg.h"

namespace zn {

/// The settings of DXF and DWG: what of a sheet metal part is exported. The reset leaves the controls enabled as they
/// were, until the next click on "Geometry".
class CConvOpDWG_DXFDlg final : public CConvOpDlg {
public:
    explicit CConvOpDWG_DXFDlg(OptionSetting setting);

private:
    /// Computes the number that the macro passes on, which is a setting without a control.
    void RegisterOptions(OptionMap& map, bool reset) override;
    void makeControls(OptionWindow& window) override;
    void onOpened() override;
    void enableGeometry();

    QCheckBox* m_geometry = nullptr;
    std::vector<QCheckBox*> m_ofGeometry;
};

} // namespace zn
