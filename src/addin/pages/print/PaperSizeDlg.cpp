#include "addin/pages/print/PaperSizeDlg.h"

#include "addin/pages/print/PaperSizes.h"
#include "addin/variables/TaskVariables.h"
#include "qtglue/Texts.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

namespace zn {

namespace {

enum Control : int {
    UseDrawing = 301,
    SizeBox,
    SizeLabel,
    SizeList,
    SizeChange,
    OrientationBox,
    Portrait,
    Landscape,
    OrientationChange,
};

constexpr int portrait = 0;
constexpr int landscape = 1;

constexpr const char16_t* useDrawingVariable = u"__printer_usedrwnfo";
constexpr const char16_t* sizeVariable = u"__printer_defpapsize";
constexpr const char16_t* sizeChangeVariable = u"__printer_usersizechange";
constexpr const char16_t* orientationVariable = u"__printer_deforientation";
constexpr const char16_t* orientationChangeVariable = u"__printer_userorientchange";

} // namespace

CPaperSizeDlg::CPaperSizeDlg(PageEnvironment& environment, QWidget* parent)
    : Page(environment, parent, u"PaperSizeDlg")
    , m_useDrawing(control<QCheckBox>(
          UseDrawing, "useDrawing", u"&Use paper size and orientation stored in drawing if available"))
    , m_size(control<QComboBox>(SizeList, "paperSize"))
    , m_sizeChange(control<QCheckBox>(SizeChange, "sizeChange", u"Allow the user to change the &size"))
    , m_orientation(new QButtonGroup(this))
    , m_orientationChange(
          control<QCheckBox>(OrientationChange, "orientationChange", u"Allow the user to change the &orientation"))
{
    for (const PaperSize& size : paperSizes) {
        if (isShown(size))
            m_size->addItem(shown(size.name), size.code);
    }
    m_size->setCurrentIndex(m_size->findData(defaultPaperSize));
    m_orientation->addButton(control<QRadioButton>(Portrait, "portrait", u"&Portrait"), portrait);
    m_orientation->addButton(control<QRadioButton>(Landscape, "landscape", u"&Landscape"), landscape);
    m_orientation->button(landscape)->setChecked(true);
    for (QCheckBox* box : {m_useDrawing, m_sizeChange, m_orientationChange})
        box->setChecked(true);
    placeControls();
    mbInitLexWnd();
}

void CPaperSizeDlg::placeControls()
{
    auto* sizeLabel = control<QLabel>(SizeLabel, "paperSizeLabel", u"&Default size:");
    sizeLabel->setBuddy(m_size);
    auto* sizeBox = control<QGroupBox>(SizeBox, "sizeBox", u"Paper size");
    auto* sizeRows = new QFormLayout(sizeBox);
    sizeRows->addRow(sizeLabel, m_size);
    sizeRows->addRow(m_sizeChange);

    auto* orientationBox = control<QGroupBox>(OrientationBox, "orientationBox", u"Orientation");
    auto* orientationRows = new QVBoxLayout(orientationBox);
    for (QAbstractButton* button : m_orientation->buttons())
        orientationRows->addWidget(button);
    orientationRows->addWidget(m_orientationChange);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_useDrawing);
    rows->addWidget(sizeBox);
    rows->addWidget(orientationBox);
    rows->addStretch();
    QWidget* const keyOrder[] = {m_useDrawing, m_size, m_sizeChange, m_orientation->button(portrait),
        m_orientation->button(landscape), m_orientationChange};
    for (std::size_t i = 1; i < std::size(keyOrder); ++i)
        setTabOrder(keyOrder[i - 1], keyOrder[i]);
}

void CPaperSizeDlg::load(const ObjectRef& task)
{
    const auto loadBox = [&](QCheckBox& box, const char16_t* variable) {
        if (const auto checked = readBoolean(task, variable))
            box.setChecked(*checked);
    };
    loadBox(*m_useDrawing, useDrawingVariable);
    if (const auto code = readInteger(task, sizeVariable)) {
        const int row = m_size->findData(*code);
        m_size->setCurrentIndex(row >= 0 ? row : m_size->findData(defaultPaperSize));
    }
    loadBox(*m_sizeChange, sizeChangeVariable);
    if (QAbstractButton* button = m_orientation->button(readInteger(task, orientationVariable).value_or(landscape)))
        button->setChecked(true);
    loadBox(*m_orientationChange, orientationChangeVariable);
}

void CPaperSizeDlg::save(const ObjectRef& task)
{
    writeVariable(task, useDrawingVariable, m_useDrawing->isChecked());
    writeVariable(task, sizeVariable, m_size->currentData().toInt());
    writeVariable(task, sizeChangeVariable, m_sizeChange->isChecked());
    writeVariable(task, orientationVariable, m_orientation->checkedId());
    writeVariable(task, orientationChangeVariable, m_orientationChange->isChecked());
}

} // namespace zn
