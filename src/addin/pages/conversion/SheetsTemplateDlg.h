#pragma once

#include "addin/pages/conversion/OutputTemplateDlg.h"

namespace zn {

/// Which sheets of a drawing are output.
class CSheetsTemplateDlg final : public OutputTemplateDlg {
public:
    CSheetsTemplateDlg(PageEnvironment& environment, QWidget* parent, bool launch);
};

} // namespace zn
