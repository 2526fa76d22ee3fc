#include "addin/pages/options/ConvOpIGESDlg.h"

#include "addin/pages/options/OptionWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

namespace zn {

namespace {

enum Control : int {
    OutputGroup = 301,
    SolidSurface,
    Representation,
    Wireframe,
    CurveRepresentation,
    SystemLabel,
    SystemList,
    FreeCurves,
    SketchEntities,
    HighCurveAccuracy,
    OneFile,
    FlattenHierarchy,
};

/// There are no values 1 and 2.
constexpr ListRow representationRows[] = {
    {33, u"Trimmed Surface (type 144)", 0},
    {34, u"Manifold Solid B-rep Objectsurface (type 186)", 3},
};

constexpr ListRow curveRows[] = {
    {35, u"B-Splines (Entity type 126)", 0},
    {36, u"Parametric Splines (Entity type 112)", 1},
};

constexpr ListRow systemRows[] = {
    {37, u"STANDARD", 0},
    {38, u"NURBS", 1},
    {47, u"ALIAS", 10},
    {45, u"ALPHACAM", 8},
    {39, u"ANSYS", 2},
    {40, u"MERIDIAN", 3},
    {41, u"MASCAM", 4},
    {46, u"MULTICAM", 9},
    {42, u"SURFCAM", 5},
    {43, u"SMARTCAM", 6},
    {44, u"TEKSOFT", 7},
};

} // namespace

CConvOpIGESDlg::CConvOpIGESDlg(OptionSetting setting)
    : CConvOpDlg(std::move(setting), u"ConvOpIGESDlg", igesOptions)
{
}

void CConvOpIGESDlg::makeControls(OptionWindow& window)
{
    auto* output = window.control<QGroupBox>(OutputGroup, "outputAs", u"Output as");
    m_surfaces
        = addCheckBox(SolidSurface, "exportSolidSurface", u"&IGES solid/surface entities:", u"IgesExportSolidSurface");
    m_surfaceKind = addList(Representation, "representation", u"IgesRepresentation", representationRows,
        ListOrder::ByLabel, u"Solid and surface entities");
    m_wireframe = addCheckBox(Wireframe, "exportWireframe", u"IGES &wireframe (3D curves):", u"IgesExportWireframe");
    m_curveKind = addList(CurveRepresentation, "curveRepresentation", u"IgesCurveRepresentation", curveRows,
        ListOrder::ByLabel, u"Curve entities");
    auto* system = addList(SystemList, "system", u"IgesSystem", systemRows);
    auto* systemLabel
        = window.control<QLabel>(SystemLabel, "systemLabel", u"Surface representation/System &preferences:");
    systemLabel->setBuddy(system);

    auto* grid = new QGridLayout(output);
    grid->addWidget(m_surfaces, 0, 0);
    grid->addWidget(m_surfaceKind, 0, 1);
    grid->addWidget(m_wireframe, 1, 0);
    grid->addWidget(m_curveKind, 1, 1);
    grid->addWidget(systemLabel, 2, 0);
    grid->addWidget(system, 2, 1);
    grid->setColumnStretch(1, 1);
    window.placeRows({
        output,
        addCheckBox(FreeCurves, "exportFreeCurves", u"Export &3D curve features", u"IgesExportFreeCurves"),
        addCheckBox(SketchEntities, "exportSketches", u"Export s&ketch entities", u"IgesExportSketchEntities"),
        addCheckBox(HighCurveAccuracy, "highCurveAccuracy", u"Use high trim curve &accuracy", u"IgesHighCurveAccuracy"),
        addCheckBox(
            OneFile, "oneFile", u"Save all components of an assembly in &one file", u"IgesComponentsIntoOneFile"),
        addCheckBox(
            FlattenHierarchy, "flattenHierarchy", u"&Flatten assembly hierarchy", u"IgesFlattenAssemblyHierarchy"),
    });

    QObject::connect(m_surfaces, &QCheckBox::clicked, m_surfaceKind, &QWidget::setEnabled);
    QObject::connect(m_wireframe, &QCheckBox::clicked, m_curveKind, &QWidget::setEnabled);
}

void CConvOpIGESDlg::SyncControls()
{
    m_surfaceKind->setEnabled(m_surfaces->isChecked());
    m_curveKind->setEnabled(m_wireframe->isChecked());
}

} // namespace zn
