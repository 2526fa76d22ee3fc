#include "addin/pages/conversion/AsmTemplateDlg.h"

namespace zn {

namespace {

const ThemeTemplate assemblies{
    .titleNumber = 301,
    .title = u"Theme for ZENTREL Assembly",
    .pathVariable = u"Asm3DPDFThemePath",
    .checksVariable = u"AsmThemeAndViewsChecks",
    .viewsVariable = u"AsmPrimaryViews",
};

} // namespace

CAsmTemplateDlg::CAsmTemplateDlg(
    PageEnvironment& environment, QWidget* parent, const std::shared_ptr<IArkVault>& vault, bool launch)
    : ThemeTemplateDlg(environment, parent, vault, assemblies, launch)
{
}

} // namespace zn
