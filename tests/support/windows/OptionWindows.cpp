#include "addin/pages/options/AdvancedConvOpDlg.h"
#include "addin/variables/OutputFormats.h"
#include "tests/support/windows/Show.h"

namespace zn::test {

namespace {

/// The options of a format in their frame.
WindowCase optionCase(const std::string& name, std::uint32_t formatCode)
{
    return {name, [=](Desk& desk, const Look& look) {
                const OutputFormat& format = outputFormats()[formatCode];
                CAdvancedConvOpDlg frame(desk.pages.environment(), desk.setting(TaskKind::Conversion).task, formatCode,
                    format.label, nullptr, true);
                showModal(look, [&] { frame.DoModal(); });
            }};
}

} // namespace

std::vector<WindowCase> optionWindows()
{
    return {
        optionCase("ConvOpACISDlg", 3),
        optionCase("ConvOpPDFDlg", 5),
        optionCase("ConvOpTifPsdDlg", 6),
        optionCase("ConvOpDWG_DXFDlg", 8),
        optionCase("ConvOpViewpaneDlg", 10),
        optionCase("ConvOpIGESDlg", 13),
        optionCase("ConvOpParasolidDlg", 16),
        optionCase("ConvOpSTEPDlg", 18),
        optionCase("ConvOpSTLDlg", 19),
        optionCase("ConvOpVRMLDlg", 22),
    };
}

} // namespace zn::test
