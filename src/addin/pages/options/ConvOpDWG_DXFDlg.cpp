#include "addin/pages/options/ConvOpDWG_DXFDlg.h"

#include "addin/pages/options/OptionWindow.h"
#include "addin/variables/SheetMetalBits.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zn {

namespace {

enum Control : int {
    ContentGroup = 301,
    Geometry,
    HiddenEdges,
    LibraryFeatures,
    FormingTools,
    BendLines,
    Sketches,
    BoundingBox,
    MergeGroup,
    Merge, // and 311
    ExportGroup = 312,
    Export, // and 314
};

void stack(QGroupBox* box, const QButtonGroup* buttons)
{
    auto* rows = new QVBoxLayout(box);
    for (QAbstractButton* button : buttons->buttons())
        rows->addWidget(button);
}

} // namespace

CConvOpDWG_DXFDlg::CConvOpDWG_DXFDlg(OptionSetting setting)
    : CConvOpDlg(std::move(setting), u"ConvOpDWG_DXFDlg", sheetMetalOptions)
{
}

void CConvOpDWG_DXFDlg::RegisterOptions(OptionMap& map, bool reset)
{
    CConvOpDlg::RegisterOptions(map, reset);
    setting(u"SheetMetalOptions") = sheetMetalBits([this](TextView name) { return setting(name); });
}

void CConvOpDWG_DXFDlg::makeControls(OptionWindow& window)
{
    auto* content = window.control<QGroupBox>(ContentGroup, "content", u"Sheet metal export");
    m_geometry = addCheckBox(Geometry, "geometry", u"&Geometry", u"SheetMetalGeometry");
    m_ofGeometry = {
        addCheckBox(HiddenEdges, "hiddenEdges", u"&Hidden edges", u"SheetMetalHiddenEdges"),
        addCheckBox(LibraryFeatures, "libraryFeatures", u"&Library features", u"SheetMetalLibraryFeatures"),
        addCheckBox(FormingTools, "formingTools", u"&Forming tools", u"SheetMetalFormingTools"),
    };
    QCheckBox* const others[] = {
        addCheckBox(BendLines, "bendLines", u"&Bend lines", u"SheetMetalBendLines"),
        addCheckBox(Sketches, "sketches", u"S&ketches", u"SheetMetalSketches"),
        addCheckBox(BoundingBox, "boundingBox", u"Bo&unding box", u"SheetMetalBoundingBox"),
    };
    auto* boxes = new QGridLayout(content);
    boxes->setColumnMinimumWidth(0, window.indent());
    boxes->addWidget(m_geometry, 0, 0, 1, 2);
    for (int row = 0; row < 3; ++row) {
        boxes->addWidget(m_ofGeometry[static_cast<std::size_t>(row)], row + 1, 1);
        boxes->addWidget(others[row], row, 2);
    }
    boxes->setColumnStretch(1, 1);
    boxes->setColumnStretch(2, 1);

    auto* merge
        = window.control<QGroupBox>(MergeGroup, "coplanarFaces", u"Co-planar faces merge settings in output file");
    stack(merge,
        addRadioButtons(Merge, {{"mergeFaces", u"&Merge faces"}, {"dontMergeFaces", u"&Do not Merge faces"}},
            u"SheetMetalMergeCoplanar"));
    auto* multiBody = window.control<QGroupBox>(ExportGroup, "multiBody", u"Multi body export options");
    stack(multiBody,
        addRadioButtons(
            Export, {{"separateFiles", u"Se&parate files"}, {"singleFile", u"&Single file"}}, u"SheetMetalExportAs"));
    window.placeRows({content, merge, multiBody});
    QObject::connect(m_geometry, &QCheckBox::clicked, &window, [this] { enableGeometry(); });
}

void CConvOpDWG_DXFDlg::onOpened() { enableGeometry(); }

void CConvOpDWG_DXFDlg::enableGeometry()
{
    for (QCheckBox* box : m_ofGeometry)
        box->setEnabled(m_geometry->isChecked());
}

} // namespace zn
