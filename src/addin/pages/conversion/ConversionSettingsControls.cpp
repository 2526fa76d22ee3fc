#include "addin/pages/conversion/AsmTemplateDlg.h"
#include "addin/pages/conversion/ConfsTemplateDlg.h"
#include "addin/pages/conversion/ConversionSettingsPageDlg.h"
#include "addin/pages/conversion/ExampleLine.h"
#include "addin/pages/conversion/FormatList.h"
#include "addin/pages/conversion/OutputPathRow.h"
#include "addin/pages/conversion/PartTemplateDlg.h"
#include "addin/pages/conversion/SheetsTemplateDlg.h"
#include "addin/pages/frame/Images.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

/// How the page is made; what it does stands in ConversionSettingsPageDlg.cpp and ConversionSettingsTabs.cpp.
namespace zn {

CConversionSettingsPageDlg::CConversionSettingsPageDlg(
    PageEnvironment& environment, QWidget* parent, const PageSetting& setting, bool launch)
    : Page(environment, parent, u"ConversionSettingsPageDlg")
    , m_setting(setting)
    , m_launch(launch)
    , m_launchParent(launch ? parent : nullptr)
{
    struct Row {
        Group group;
        QWidget* widget;
    };
    const Row rows[] = {
        {FormatGroup, makeFormatRow()},
        {PathGroup, launch ? makePathRow() : nullptr},
        {OutputGroup, makeOutputTabs()},
        {ThemeGroup, makeThemeTabs()},
        {ReferenceGroup, makeReferenceBox()},
        {NoteGroup, makeEmptyNote()},
    };
    auto* whole = new QVBoxLayout(this);
    for (const Row& row : rows) {
        if (row.widget)
            whole->addWidget(row.widget);
    }
    whole->addStretch();
    mbInitLexWnd();
    for (const Row& row : rows)
        mvAddControl(row.group, row.widget);
    mvShowGroup(NoteGroup, false);

    fillFormatList(*m_formats, environment, launch);
    m_latest->setChecked(true);
    refreshForFormat();
    connectControls();
}

CConversionSettingsPageDlg::~CConversionSettingsPageDlg() = default;

QWidget* CConversionSettingsPageDlg::makeFormatRow()
{
    auto* row = new QWidget(this);
    row->setObjectName("formatRow");
    auto* label = control<QLabel>(FormatLabel, "formatLabel", u"Output file &format:");
    m_formats = control<QComboBox>(Formats, "outputFormat");
    m_options = control<QPushButton>(Options, "conversionOptions", u"Con&version Options...");
    label->setBuddy(m_formats);
    auto* grid = new QGridLayout(row);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(label, 0, 0, 1, 2);
    grid->addWidget(m_formats, 1, 0);
    grid->addWidget(m_options, 1, 1);
    grid->setColumnStretch(0, 1);
    return row;
}

QWidget* CConversionSettingsPageDlg::makePathRow()
{
    auto* row = new QWidget(this);
    row->setObjectName("pathRow");
    auto* label = control<QLabel>(PathLabel, "outputPathLabel", u"Output file pat&h:");
    auto* place = control<QWidget>(PathEdit, "outputPath");
    m_path = new OutputPathRow(environment(), m_setting.vault, place);
    auto* menu = control<QToolButton>(PathMenu, "outputPathMenu", u">");
    auto* example = control<ExampleLine>(Example, "example");
    m_path->attach(menu, example);
    label->setBuddy(place);
    menu->setAccessibleName(ts(620, u"Insert a part of the path"));
    auto* grid = new QGridLayout(row);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(label, 0, 0, 1, 2);
    grid->addWidget(place, 1, 0);
    grid->addWidget(menu, 1, 1, Qt::AlignTop);
    grid->addWidget(example, 2, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    return row;
}

QTabWidget* CConversionSettingsPageDlg::makeOutputTabs()
{
    m_outputTabs = control<QTabWidget>(OutputTabs, "outputTabs", u"Configurations and sheets");
    m_confs = new CConfsTemplateDlg(environment(), m_outputTabs, m_launch);
    m_sheets = new CSheetsTemplateDlg(environment(), m_outputTabs, m_launch);
    m_confs->setObjectName("configurations");
    m_sheets->setObjectName("sheets");
    m_outputPair = {{{m_confs, image("PNG_CONFIG_SELECTED"), ts(621, u"Configurations")},
        {m_sheets, image("PNG_SHEET"), ts(622, u"Sheets")}}};
    putTabs(*m_outputTabs, m_outputPair, {true, true});
    return m_outputTabs;
}

QTabWidget* CConversionSettingsPageDlg::makeThemeTabs()
{
    m_themeTabs = control<QTabWidget>(ThemeTabs, "themeTabs", u"3D PDF theme and views");
    m_assembly = new CAsmTemplateDlg(environment(), m_themeTabs, m_setting.vault, m_launch);
    m_part = new CPartTemplateDlg(environment(), m_themeTabs, m_setting.vault, m_launch);
    m_assembly->setObjectName("assembly");
    m_part->setObjectName("part");
    m_themePair
        = {{{m_assembly, image("PNG_ASSEMBLY"), ts(623, u"Assembly")}, {m_part, image("PNG_PART"), ts(624, u"Part")}}};
    putTabs(*m_themeTabs, m_themePair, {true, true});
    m_themePage = m_assembly;
    return m_themeTabs;
}

QWidget* CConversionSettingsPageDlg::makeReferenceBox()
{
    auto* box = control<QGroupBox>(ReferenceBox, "sourceReferences", u"Source file references");
    m_asBuilt = control<QRadioButton>(
        AsBuilt, "referencedVersion", u"Use the &referenced version of the referenced files (\"as built\")");
    m_latest = control<QRadioButton>(Latest, "latestVersion", u"Use the late&st version of the referenced files");
    m_allowReferences
        = control<QCheckBox>(AllowReferences, "allowReferences", u"Allow the user to chan&ge this setting");
    auto* rows = new QVBoxLayout(box);
    for (QWidget* row : std::initializer_list<QWidget*>{m_asBuilt, m_latest, m_allowReferences})
        rows->addWidget(row);
    return box;
}

/// A launch may come up for settings that have no tab of their own then; the page says that it may be accepted.
QWidget* CConversionSettingsPageDlg::makeEmptyNote()
{
    auto* note = control<QLabel>(
        EmptyNote, "emptyNote", u"The settings of this task can't be changed for the selected files.");
    note->setWordWrap(true);
    return note;
}

void CConversionSettingsPageDlg::connectControls()
{
    connect(m_formats, &QComboBox::currentIndexChanged, this, [this] { inSlot([this] { refreshForFormat(); }); });
    connect(m_options, &QPushButton::clicked, this, [this] { inSlot([this] { showOptions(); }); });
    connect(m_themeTabs, &QTabWidget::currentChanged, this, [this] { inSlot([this] { themeTabChanged(); }); });
}

} // namespace zn
