#pragma once

#include "addin/pages/options/ConvOpDlg.h"
#include "addin/pages/options/GeometryChoice.h"

#include <memory>

namespace zn {

/// The settings of STEP.
class CConvOpSTEPDlg final : public CConvOpDlg {
public:
    explicit CConvOpSTEPDlg(OptionSetting setting);

private:
    void SyncControls() override;
    void makeControls(OptionWindow& window) override;

    std::unique_ptr<GeometryChoice> m_geometry;
};

} // namespace zn
