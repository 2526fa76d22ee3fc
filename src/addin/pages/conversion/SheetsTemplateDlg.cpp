#include "addin/pages/conversion/SheetsTemplateDlg.h"

namespace zn {

namespace {

/// "<Prompt the user>", Adobe PDF and the viewer's format.
constexpr std::int32_t formatsWithGrouping[] = {0, 5, 10};

const OutputTemplate sheets{
    .lexName = u"SheetsTemplateDlg",
    .outputTitle = u"Sheets to output",
    .all = u"&All sheets",
    .lastActive = u"&Last active sheet",
    .named = u"&Named sheet (use * as wildcard):",
    .fileTitle = u"Multi-sheet output",
    .oneFileEach = u"Create one output file &per sheet",
    .sameFile = u"&Include all sheets in the same output file",
    .outputVariable = u"OutputSheets",
    .nameVariable = u"NamedSheet",
    .fileVariable = u"FileSheets",
    .groupingFormats = formatsWithGrouping,
};

} // namespace

CSheetsTemplateDlg::CSheetsTemplateDlg(PageEnvironment& environment, QWidget* parent, bool launch)
    : OutputTemplateDlg(environment, parent, sheets, launch)
{
}

} // namespace zn
