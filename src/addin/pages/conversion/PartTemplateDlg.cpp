#include "addin/pages/conversion/PartTemplateDlg.h"

namespace zn {

namespace {

const ThemeTemplate parts{
    .titleNumber = 302,
    .title = u"Theme for ZENTREL Part",
    .pathVariable = u"Part3DPDFThemePath",
    .checksVariable = u"PartThemeAndViewsChecks",
    .viewsVariable = u"PartPrimaryViews",
};

} // namespace

CPartTemplateDlg::CPartTemplateDlg(
    PageEnvironment& environment, QWidget* parent, const std::shared_ptr<IArkVault>& vault, bool launch)
    : ThemeTemplateDlg(environment, parent, vault, parts, launch)
{
}

} // namespace zn
