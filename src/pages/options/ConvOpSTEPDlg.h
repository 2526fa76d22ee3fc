#pragma once

#include "pages/options/ConvOpDlg.h"
#include "pages/options/GeometryChoice.h"

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
