#pragma once

#include "addin/pages/options/ConvOpDlg.h"

namespace zn {

/// The settings of Adobe PDF.
class CConvOpPDFDlg final : public CConvOpDlg {
public:
    explicit CConvOpPDFDlg(OptionSetting setting);

private:
    void makeControls(OptionWindow& window) override;
};

} // namespace zn
