#include "addin/pages/options/AdvancedConvOpDlg.h"

#include "addin/pages/options/AdvancedConvOpFrame.h"
#include "addin/pages/options/ConvOpACISDlg.h"
#include "addin/pages/options/ConvOpDWG_DXFDlg.h"
#include "addin/pages/options/ConvOpIGESDlg.h"
#include "addin/pages/options/ConvOpParasolidDlg.h"
#include "addin/pages/options/ConvOpPDFDlg.h"
#include "addin/pages/options/ConvOpSTEPDlg.h"
#include "addin/pages/options/ConvOpSTLDlg.h"
#include "addin/pages/options/ConvOpTifPsdDlg.h"
#include "addin/pages/options/ConvOpViewpaneDlg.h"
#include "addin/pages/options/ConvOpVRMLDlg.h"

namespace zn {

namespace {

using Maker = std::unique_ptr<CConvOpDlg> (*)(OptionSetting);

template <class Dialog> std::unique_ptr<CConvOpDlg> make(OptionSetting setting)
{
    return std::make_unique<Dialog>(std::move(setting));
}

struct FormatDialog {
    std::uint32_t formatCode;
    Maker make;
    const char16_t* helpTopic;
};

const FormatDialog formatDialogs[] = {
    {3, make<CConvOpACISDlg>, u"ConvOpACISDlg"},
    {5, make<CConvOpPDFDlg>, u"ConvOpPDFDlg"},
    {6, make<CConvOpTifPsdDlg>, u"ConvOpTifPsdDlg"},
    {8, make<CConvOpDWG_DXFDlg>, u"ConvOpDWG_DXFDlg"},
    {9, make<CConvOpDWG_DXFDlg>, u"ConvOpDWG_DXFDlg"},
    {10, make<CConvOpViewpaneDlg>, u"ConvOpViewpaneDlg"},
    {13, make<CConvOpIGESDlg>, u"ConvOpIGESDlg"},
    {16, make<CConvOpParasolidDlg>, u"ConvOpParasolidDlg"},
    {17, make<CConvOpParasolidDlg>, u"ConvOpParasolidDlg"},
    {18, make<CConvOpSTEPDlg>, u"ConvOpStepDlg"},
    {19, make<CConvOpSTLDlg>, u"ConvOpSTLDlg"},
    {20, make<CConvOpTifPsdDlg>, u"ConvOpTifPsdDlg"},
    {22, make<CConvOpVRMLDlg>, u"ConvOpVRMLDlg"},
};

const FormatDialog* findFormatDialog(std::uint32_t formatCode)
{
    for (const FormatDialog& row : formatDialogs) {
        if (row.formatCode == formatCode)
            return &row;
    }
    return nullptr;
}

} // namespace

CAdvancedConvOpDlg::CAdvancedConvOpDlg(PageEnvironment& environment, ObjectRef task, std::uint32_t formatCode,
    Text label, QWidget* parent, bool showAsChild)
    : m_environment(environment)
    , m_task(std::move(task))
    , m_formatCode(formatCode)
    , m_label(std::move(label))
    , m_parent(parent)
    , m_showAsChild(showAsChild)
{
}

std::unique_ptr<CConvOpDlg> CAdvancedConvOpDlg::MakeOptionDialog(std::uint32_t formatCode) const
{
    const FormatDialog* row = findFormatDialog(formatCode);
    return row ? row->make({m_environment, m_task, m_parent}) : nullptr;
}

bool CAdvancedConvOpDlg::DoModal()
{
    const FormatDialog* row = findFormatDialog(m_formatCode);
    AdvancedConvOpFrame frame(m_environment, m_parent, m_label, row ? row->helpTopic : u"AdvancedConvOpDlg",
        m_showAsChild ? MakeOptionDialog(m_formatCode) : nullptr);
    return frame.exec() == QDialog::Accepted;
}

bool CAdvancedConvOpDlg::PersistOptions()
{
    const std::unique_ptr<CConvOpDlg> child = MakeOptionDialog(m_formatCode);
    if (!child)
        return true;
    child->LoadOptions(false);
    return child->OnOK();
}

} // namespace zn
