#include "addin/pages/options/ConvOpSTLDlg.h"

#include "addin/pages/options/OptionWindow.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zn {

namespace {

enum Control : int {
    OutputGroup = 301,
    Binary,
    Ascii,
    UnitLabel,
    UnitList,
    ResolutionGroup,
    Coarse,
    Fine,
    DontTranslate,
    OneFile,
    Interferences,
};

constexpr std::int32_t coarse = 1;
constexpr std::int32_t fine = 2;

/// A radio button that stores its value at once.
QRadioButton* choice(
    OptionWindow& window, int number, const char* role, const char16_t* text, std::int32_t& setting, std::int32_t value)
{
    auto* button = window.control<QRadioButton>(number, role, text);
    QObject::connect(button, &QRadioButton::clicked, &window, [&setting, value] { setting = value; });
    return button;
}

} // namespace

CConvOpSTLDlg::CConvOpSTLDlg(OptionSetting setting)
    : CConvOpDlg(std::move(setting), u"ConvOpSTLDlg", stlOptions)
{
}

void CConvOpSTLDlg::makeControls(OptionWindow& window)
{
    auto* output = window.control<QGroupBox>(OutputGroup, "outputAs", u"Output as");
    m_binary = choice(window, Binary, "binary", u"&Binary", setting(u"StlOutputAs"), 1);
    m_ascii = choice(window, Ascii, "ascii", u"&ASCII", setting(u"StlOutputAs"), 0);
    auto* fields = new QFormLayout(output);
    fields->addRow(m_binary);
    fields->addRow(m_ascii);
    addLabelledList(*fields, UnitLabel, u"&Unit:", addList(UnitList, "unit", u"StlOutputAsUnit", unitRows));

    auto* resolution = window.control<QGroupBox>(ResolutionGroup, "resolution", u"Resolution");
    m_coarse = choice(window, Coarse, "coarse", u"&Coarse", setting(u"StlQuality"), coarse);
    m_fine = choice(window, Fine, "fine", u"&Fine", setting(u"StlQuality"), fine);
    auto* rows = new QVBoxLayout(resolution);
    rows->addWidget(m_coarse);
    rows->addWidget(m_fine);

    auto* dontTranslate = addCheckBox(DontTranslate, "dontTranslatePositive",
        u"&Do not translate STL output data to positive space", u"StlDontTranslatePositive");
    m_oneFile = addCheckBox(
        OneFile, "oneFile", u"&Save all components of an assembly in a single file", u"StlComponentsIntoOneFile");
    m_interferences
        = addCheckBox(Interferences, "checkForInterferences", u"Check for &interferences", u"StlCheckForInterferences");
    window.placeRows({output, resolution, dontTranslate, m_oneFile});
    window.placeIndented(m_interferences);
    QObject::connect(m_oneFile, &QCheckBox::clicked, m_interferences, &QWidget::setEnabled);
}

void CConvOpSTLDlg::SyncControls()
{
    (setting(u"StlOutputAs") > 0 ? m_binary : m_ascii)->setChecked(true);
    (setting(u"StlQuality") == coarse ? m_coarse : m_fine)->setChecked(true);
    m_interferences->setEnabled(m_oneFile->isChecked());
}

} // namespace zn
