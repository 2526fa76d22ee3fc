#pragma once

#include "addin/pages/conversion/ThemeTemplateDlg.h"

namespace zn {

/// Theme and views of 3D PDFs made from assemblies.
class CAsmTemplateDlg final : public ThemeTemplateDlg {
public:
    CAsmTemplateDlg(
        PageEnvironment& environment, QWidget* parent, const std::shared_ptr<IArkVault>& vault, bool launch);
};

} // namespace zn
