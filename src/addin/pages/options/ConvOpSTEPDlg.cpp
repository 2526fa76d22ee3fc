#include "addin/pages/options/ConvOpSTEPDlg.h"

#include "addin/pages/options/OptionWindow.h"

#include <QFormLayout>
#include <QGroupBox>

namespace zn {

namespace {

enum Control : int {
    OutputGroup = 301,
    Geometry = 302, // to 304
    VersionLabel = 305,
    VersionList = 306,
};

constexpr ListRow versionRows[] = {
    {0, u"AP203", 203},
    {0, u"AP214", 214},
};

} // namespace

CConvOpSTEPDlg::CConvOpSTEPDlg(OptionSetting setting)
    : CConvOpDlg(std::move(setting), u"ConvOpSTEPDlg", stepOptions)
{
}

void CConvOpSTEPDlg::makeControls(OptionWindow& window)
{
    auto* output = window.control<QGroupBox>(OutputGroup, "outputAs", u"Output as");
    m_geometry = std::make_unique<GeometryChoice>(window, Geometry, setting(u"StepGeometry"));
    auto* fields = new QFormLayout(output);
    fields->addRow(m_geometry->layout());
    addLabelledList(*fields, VersionLabel, u"&Version:",
        addList(VersionList, "version", u"StepVersion", versionRows, ListOrder::ByLabel));
    window.placeRows({output});
}

void CConvOpSTEPDlg::SyncControls() { m_geometry->sync(); }

} // namespace zn
