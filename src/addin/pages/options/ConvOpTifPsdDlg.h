#pragma once

#include "addin/pages/options/ConvOpDlg.h"

namespace zn {

/// The settings of TIF and Adobe Photoshop.
class CConvOpTifPsdDlg final : public CConvOpDlg {
public:
    explicit CConvOpTifPsdDlg(OptionSetting setting);

private:
    void makeControls(OptionWindow& window) override;
};

} // namespace zn
