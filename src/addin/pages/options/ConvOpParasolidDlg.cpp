#include "addin/pages/options/ConvOpParasolidDlg.h"

#include "addin/pages/options/OptionWindow.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>

namespace zn {

namespace {

enum Control : int {
    OutputGroup = 301,
    VersionLabel = 302,
    VersionList = 303,
    FlattenHierarchy = 304,
};

/// A running number of releases.
constexpr ListRow versionRows[] = {
    {0, u"19.1", 17},
    {0, u"18.1", 16},
    {0, u"17.1", 15},
    {0, u"16.1", 14},
    {0, u"16.0", 13},
    {0, u"15.1", 12},
    {0, u"15.0", 11},
    {0, u"14.0", 10},
    {0, u"13.0", 9},
    {0, u"12.1", 8},
    {0, u"12.0", 7},
    {0, u"11.1", 6},
    {0, u"11.0", 5},
    {0, u"10.0", 4},
    {0, u"9.1", 3},
    {0, u"9.0", 2},
    {0, u"8.0", 1},
};

} // namespace

CConvOpParasolidDlg::CConvOpParasolidDlg(OptionSetting setting)
    : CConvOpDlg(std::move(setting), u"ConvOpParasolidDlg", parasolidOptions)
{
}

void CConvOpParasolidDlg::makeControls(OptionWindow& window)
{
    auto* output = window.control<QGroupBox>(OutputGroup, "outputAs", u"Output as");
    auto* fields = new QFormLayout(output);
    addLabelledList(
        *fields, VersionLabel, u"&Version:", addList(VersionList, "version", u"ParasolidVersion", versionRows));
    window.placeRows({output,
        addCheckBox(
            FlattenHierarchy, "flattenHierarchy", u"&Flatten assembly hierarchy", u"ParasolidFlattenHierarchy")});
}

} // namespace zn
