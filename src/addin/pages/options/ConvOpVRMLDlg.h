#pragma once

#include "addin/pages/options/ConvOpDlg.h"

namespace zn {

/// The settings of VRML.
class CConvOpVRMLDlg final : public CConvOpDlg {
public:
    explicit CConvOpVRMLDlg(OptionSetting setting);

private:
    void makeControls(OptionWindow& window) override;
};

} // namespace zn
