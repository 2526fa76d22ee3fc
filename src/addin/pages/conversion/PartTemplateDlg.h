#pragma once

#include "addin/pages/conversion/ThemeTemplateDlg.h"

namespace zn {

/// Theme and views of 3D PDFs made from parts.
class CPartTemplateDlg final : public ThemeTemplateDlg {
public:
    CPartTemplateDlg(
        PageEnvironment& environment, QWidget* parent, const std::shared_ptr<IArkVault>& vault, bool launch);
};

} // namespace zn
