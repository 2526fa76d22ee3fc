#include "addin/pages/conversion/ConfsTemplateDlg.h"

namespace zn {

namespace {

/// "<Prompt the user>" and the viewer's format.
constexpr std::int32_t formatsWithGrouping[] = {0, 10};

const OutputTemplate configurations{
    .lexName = u"ConfsTemplateDlg",
    .outputTitle = u"Configurations to output",
    .all = u"&All configurations",
    .lastActive = u"&Last active configuration",
    .named = u"&Named configuration (use * as wildcard):",
    .fileTitle = u"Multi-configuration output",
    .oneFileEach = u"Create one output file &per configuration",
    .sameFile = u"&Include all configurations in the same output file",
    .outputVariable = u"OutputConfs",
    .nameVariable = u"NamedConf",
    .fileVariable = u"FileConfs",
    .groupingFormats = formatsWithGrouping,
};

} // namespace

CConfsTemplateDlg::CConfsTemplateDlg(PageEnvironment& environment, QWidget* parent, bool launch)
    : OutputTemplateDlg(environment, parent, configurations, launch)
{
}

} // namespace zn
