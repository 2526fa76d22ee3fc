#pragma once

#include "addin/pages/conversion/OutputTemplateDlg.h"

namespace zn {

/// Which configurations of a part or assembly are output.
class CConfsTemplateDlg final : public OutputTemplateDlg {
public:
    CConfsTemplateDlg(PageEnvironment& environment, QWidget* parent, bool launch);
};

} // namespace zn
