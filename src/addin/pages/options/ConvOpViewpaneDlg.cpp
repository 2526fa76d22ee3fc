#include "addin/pages/options/ConvOpViewpaneDlg.h"

#include "addin/pages/options/OptionWindow.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

namespace zn {

namespace {

enum Control : int {
    OkayToMeasure = 301,
    MeasureNote,
    AllowExport,
    ExportNote,
    ShadedData,
    ShadedNote,
    BillOfMaterials,
    BillNote,
    MotionStudies,
    MotionNote,
    EveryConfiguration,
    LastConfiguration,
    Recalculate,
};

} // namespace

CConvOpViewpaneDlg::CConvOpViewpaneDlg(OptionSetting setting)
    : CConvOpDlg(std::move(setting), u"ConvOpViewpaneDlg", viewpaneOptions)
{
}

void CConvOpViewpaneDlg::makeControls(OptionWindow& window)
{
    const auto noted = [&](QCheckBox* box, int number, const char* role, const char16_t* note) {
        window.placeRows({box});
        auto* label = window.control<QLabel>(number, role, note);
        label->setWordWrap(true);
        window.placeIndented(label);
    };
    noted(addCheckBox(OkayToMeasure, "okayToMeasure", u"&Okay to measure this Viewpane file", u"VwpnOkayToMeasure"),
        MeasureNote, "measureNote", u"Whoever opens the file may measure distances and angles in it.");
    noted(addCheckBox(
              AllowExport, "allowExport", u"Allow export to STL for parts && asse&mblies", u"VwpnAllowExportOfSTL"),
        ExportNote, "exportNote", u"Whoever opens the file may save its model as an STL file.");
    noted(addCheckBox(ShadedData, "saveShadedData", u"Save &shaded data in drawings", u"VwpnSaveShadedData"),
        ShadedNote, "shadedNote", u"Shaded views of drawings stay shaded. The file becomes larger.");
    noted(addCheckBox(BillOfMaterials, "saveBom", u"Save &Bill of Materials features to Viewpane file", u"VwpnSaveBOM"),
        BillNote, "bomNote", u"The file shows the bills of materials of assemblies and drawings.");
    m_motionStudies = addCheckBox(
        MotionStudies, "saveMotionStudies", u"Save Motion S&tudies to Viewpane file", u"VwpnSaveMotionStudies");
    noted(m_motionStudies, MotionNote, "motionNote", u"The file plays the motion studies of assemblies.");

    m_everyConfiguration = window.control<QRadioButton>(
        EveryConfiguration, "everyConfiguration", u"Save each motion study in &every configuration.");
    m_lastConfiguration = window.control<QRadioButton>(
        LastConfiguration, "lastConfiguration", u"Save only in &last calculated configuration.");
    m_recalculate = addCheckBox(Recalculate, "recalculate",
        u"Recalculate the motion study if the results are o&ut of date.", u"VwpnRecalcMotionStudies");
    window.placeIndented(m_everyConfiguration);
    window.placeIndented(m_lastConfiguration);
    window.placeIndented(m_recalculate, 2);

    QObject::connect(m_motionStudies, &QCheckBox::clicked, &window, [this] { onMotionStudies(); });
    QObject::connect(m_everyConfiguration, &QRadioButton::clicked, &window, [this] { chooseConfigurations(true); });
    QObject::connect(m_lastConfiguration, &QRadioButton::clicked, &window, [this] { chooseConfigurations(false); });
}

void CConvOpViewpaneDlg::onMotionStudies()
{
    takeControls();
    const bool on = isOn(u"VwpnSaveMotionStudies");
    m_everyConfiguration->setEnabled(on);
    m_lastConfiguration->setEnabled(on);
    m_recalculate->setEnabled(on && !m_everyConfiguration->isChecked());
}

void CConvOpViewpaneDlg::chooseConfigurations(bool all)
{
    setting(u"VwpnSaveMotionStudiesToAllConfs") = all ? 1 : 0;
    m_recalculate->setEnabled(!all);
}

void CConvOpViewpaneDlg::SyncControls()
{
    (isOn(u"VwpnSaveMotionStudiesToAllConfs") ? m_everyConfiguration : m_lastConfiguration)->setChecked(true);
    onMotionStudies();
    // Whatever the first box says: administrators know the page so, and may change the box while studies are off.
    m_recalculate->setEnabled(!m_everyConfiguration->isChecked());
}

} // namespace zn
