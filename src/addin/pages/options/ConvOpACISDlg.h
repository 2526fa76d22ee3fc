#pragma once

#include "addin/pages/options/ConvOpDlg.h"
#include "addin/pages/options/GeometryChoice.h"

#include <memory>

namespace zn {

/// The settings of ACIS.
class CConvOpACISDlg final : public CConvOpDlg {
public:
    explicit CConvOpACISDlg(OptionSetting setting);

private:
    void SyncControls() override;
    void makeControls(OptionWindow& window) override;

    std::unique_ptr<GeometryChoice> m_geometry;
};

} // namespace zn
