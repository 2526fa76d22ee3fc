#include "addin/pages/options/ConvOpACISDlg.h"

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
    UnitLabel = 307,
    UnitList = 308,
};

/// A running number of releases, among which there is no "9.0".
constexpr ListRow versionRows[] = {
    {0, u"18.0", 18},
    {0, u"17.0", 17},
    {0, u"16.0", 16},
    {0, u"15.0", 15},
    {0, u"14.0", 14},
    {0, u"13.0", 13},
    {0, u"12.0", 12},
    {0, u"11.0", 11},
    {0, u"10.0", 10},
    {0, u"8.0", 9},
    {0, u"7.0", 8},
    {0, u"6.0", 7},
    {0, u"5.0", 6},
    {0, u"4.0", 5},
    {0, u"3.0", 4},
    {0, u"2.1", 3},
    {0, u"2.0", 2},
    {0, u"1.7", 1},
    {0, u"1.6", 0},
};

} // namespace

CConvOpACISDlg::CConvOpACISDlg(OptionSetting setting)
    : CConvOpDlg(std::move(setting), u"ConvOpACISDlg", acisOptions)
{
}

void CConvOpACISDlg::makeControls(OptionWindow& window)
{
    auto* output = window.control<QGroupBox>(OutputGroup, "outputAs", u"Output as");
    m_geometry = std::make_unique<GeometryChoice>(window, Geometry, setting(u"AcisGeometry"));
    auto* fields = new QFormLayout(output);
    fields->addRow(m_geometry->layout());
    addLabelledList(*fields, VersionLabel, u"&Version:", addList(VersionList, "version", u"AcisVersion", versionRows));
    addLabelledList(*fields, UnitLabel, u"&Unit:", addList(UnitList, "unit", u"AcisOutputAsUnit", unitRows));
    window.placeRows({output});
}

void CConvOpACISDlg::SyncControls() { m_geometry->sync(); }

} // namespace zn
