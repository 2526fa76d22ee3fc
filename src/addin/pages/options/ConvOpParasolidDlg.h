#pragma once

#include "addin/pages/options/ConvOpDlg.h"

namespace zn {

/// The settings of Parasolid and Parasolid Binary.
class CConvOpParasolidDlg final : public CConvOpDlg {
public:
    explicit CConvOpParasolidDlg(OptionSetting setting);

private:
    void makeControls(OptionWindow& window) override;
};

} // namespace zn
