#include "addin/pages/options/ConvOpVRMLDlg.h"

#include "addin/pages/options/OptionWindow.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>

namespace zn {

namespace {

enum Control : int { OutputGroup = 301, UnitLabel, UnitList, OneFile };

} // namespace

CConvOpVRMLDlg::CConvOpVRMLDlg(OptionSetting setting)
    : CConvOpDlg(std::move(setting), u"ConvOpVRMLDlg", vrmlOptions)
{
}

void CConvOpVRMLDlg::makeControls(OptionWindow& window)
{
    auto* output = window.control<QGroupBox>(OutputGroup, "outputAs", u"Output as");
    auto* fields = new QFormLayout(output);
    addLabelledList(*fields, UnitLabel, u"&Unit:", addList(UnitList, "unit", u"VrmlOutputAsUnit", unitRows));
    window.placeRows({output,
        addCheckBox(OneFile, "oneFile", u"&Save all components of the assembly in a single file",
            u"VrmlSaveAssemblyAsOneFile")});
}

} // namespace zn
