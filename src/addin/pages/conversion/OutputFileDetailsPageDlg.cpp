#include "addin/pages/conversion/OutputFileDetailsPageDlg.h"

#include "addin/pages/conversion/ExampleLine.h"
#include "addin/pages/paths/ExampleText.h"
#include "addin/pages/paths/LogFolderRow.h"
#include "addin/pages/paths/PathTokens.h"
#include "addin/pages/script/ScriptPageDlg.h"
#include "addin/variables/TaskVariables.h"
#include "addin/variables/UsedVariables.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

namespace zn {

namespace {

enum Control : int {
    PrimaryBox = 301,
    PrimaryLabel = 302,
    PrimaryPath = 303, ///< with the numbers of its menu button and example behind it
    PromptOutput = 306,
    SecondaryBox = 307,
    SecondaryNote = 308,
    SecondaryPath = 309, ///< likewise
    RefToSource = 312,
    DuplicateBox = 313,
    Replace = 314,
    NewVersion = 315,
    LogLabel = 316,
    LogPath = 317,
    Browse = 318,
    LogNote = 319,
    AdvancedScripting = 320,
};

} // namespace

COutputFileDetailsPageDlg::COutputFileDetailsPageDlg(
    PageEnvironment& environment, QWidget* parent, const PageSetting& setting, ConversionPage& conversion)
    : Page(environment, parent, u"OutputFileDetailsPageDlg")
    , m_setting(setting)
    , m_conversion(conversion)
    , m_promptOutput(control<QCheckBox>(PromptOutput, "promptOutput", u"&Allow the user to change the output path"))
    , m_refToSource(control<QCheckBox>(
          RefToSource, "refToSource", u"Create a re&ference from the destination file to the source file"))
    , m_replace(control<QRadioButton>(Replace, "replaceOutput", u"&Replace exisiting files"))
    , m_newVersion(control<QRadioButton>(NewVersion, "newVersion", u"Create &new version of existing files"))
    , m_logFolder(makeLogFolder())
{
    auto* advanced = control<QPushButton>(AdvancedScripting, "advancedScripting", u"Advanced &Scripting Options...");
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(makePrimaryBox());
    whole->addWidget(makeSecondaryBox());
    whole->addWidget(m_refToSource);
    whole->addWidget(makeDuplicateBox());
    whole->addWidget(m_logFolder);
    whole->addWidget(advanced, 0, Qt::AlignLeft);
    whole->addStretch();
    setKeyOrder();
    mbInitLexWnd();

    m_variables = ReadVaultVariables(setting.vault);
    fillPathBoxes();
    m_logFolder->fill();
    m_replace->setChecked(true);
    connect(advanced, &QPushButton::clicked, this,
        [this] { inSlot([this] { editScript(this->environment(), this, m_setting.task); }); });
    followPath(m_primary);
    followPath(m_secondary);
}

COutputFileDetailsPageDlg::~COutputFileDetailsPageDlg()
{
    for (const PathField* field : {&m_primary, &m_secondary})
        field->box->mvRegisterCallback(nullptr);
}

void COutputFileDetailsPageDlg::setKeyOrder()
{
    constexpr const char* roles[] = {"outputPath", "outputPathMenu", "promptOutput", "outputPath2", "outputPath2Menu",
        "refToSource", "replaceOutput", "newVersion", "errorLogPath", "browse", "advancedScripting"};
    QWidget* before = nullptr;
    for (const char* role : roles) {
        auto* control = findChild<QWidget*>(QLatin1String(role));
        if (before)
            setTabOrder(before, control);
        before = control;
    }
}

QWidget* COutputFileDetailsPageDlg::makePrimaryBox()
{
    auto* group = control<QGroupBox>(PrimaryBox, "primaryBox", u"Primary output path");
    auto* label = control<QLabel>(PrimaryLabel, "outputPathLabel", u"&Default path:");
    QWidget* path = makePathRow(m_primary, PrimaryPath, "outputPath", u"");
    label->setBuddy(path->findChild<QWidget*>("outputPath"));
    auto* rows = new QVBoxLayout(group);
    rows->addWidget(label);
    rows->addWidget(path);
    rows->addWidget(m_primary.example);
    rows->addWidget(m_promptOutput);
    return group;
}

QWidget* COutputFileDetailsPageDlg::makeSecondaryBox()
{
    auto* group = control<QGroupBox>(SecondaryBox, "secondaryBox", u"Secondary output path");
    auto* note = control<QLabel>(
        SecondaryNote, "secondaryNote", u"(Leave this field empty if you only want one copy of the file.)");
    note->setWordWrap(true);
    auto* rows = new QVBoxLayout(group);
    rows->addWidget(note);
    rows->addWidget(makePathRow(m_secondary, SecondaryPath, "outputPath2", u"Secondary output path"));
    rows->addWidget(m_secondary.example);
    return group;
}

QWidget* COutputFileDetailsPageDlg::makePathRow(PathField& field, int number, const char* role, const char16_t* name)
{
    const QByteArray menuRole = QByteArray(role) + "Menu";
    const QByteArray exampleRole = QByteArray(role) + "Example";
    auto* place = control<QWidget>(number, role, name);
    auto* menu = control<QToolButton>(number + 1, menuRole.constData(), u">");
    menu->setAccessibleName(ts(620, u"Insert a part of the path"));
    field.example = control<ExampleLine>(number + 2, exampleRole.constData());
    field.box = environment().makeTokenBox();
    field.box->mvDDX_Control(place);
    connect(menu, &QToolButton::clicked, this, [box = field.box.get(), menu] { box->mbShowMenu(menu, nullptr); });

    auto* row = new QWidget(this);
    auto* columns = new QHBoxLayout(row);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->addWidget(place, 1);
    columns->addWidget(menu, 0, Qt::AlignTop);
    return row;
}

QWidget* COutputFileDetailsPageDlg::makeDuplicateBox()
{
    auto* group = control<QGroupBox>(DuplicateBox, "duplicateBox", u"Duplicate File Name Handling");
    auto* rows = new QVBoxLayout(group);
    rows->addWidget(m_replace);
    rows->addWidget(m_newVersion);
    return group;
}

LogFolderRow* COutputFileDetailsPageDlg::makeLogFolder()
{
    const LogFolderRow::Controls controls{
        control<QLabel>(LogLabel, "errorLogPathLabel", u"&Error logs folder:"),
        control<QLineEdit>(LogPath, "errorLogPath"),
        control<QPushButton>(Browse, "browse", u"&Browse..."),
        control<QLabel>(LogNote, "errorLogNote", u"(Error log files will be named with a unique identifier)"),
    };
    return new LogFolderRow(
        *this, environment(), m_setting, controls, ts(6, u"Select a folder:"), LogFolderRow::Picked::WholePath);
}

void COutputFileDetailsPageDlg::fillPathBoxes()
{
    for (const PathField* field : {&m_primary, &m_secondary}) {
        AddPathTokens(environment(), *field->box);
        AddVariableTokens(environment(), *field->box, m_variables);
        field->box->mvSetText(initialValue(field == &m_primary ? u"OutputPath" : u"OutputPath2").toText());
        field->box->mvRegisterCallback(this);
    }
}

void COutputFileDetailsPageDlg::OnTokenTextChanged(tokenctrl::TokenBox& box)
{
    inSlot([&] { followPath(&box == m_primary.box.get() ? m_primary : m_secondary); });
}

void COutputFileDetailsPageDlg::followPath(const PathField& field)
{
    field.example->setText(BuildExampleText(
        environment(), *m_setting.vault, *field.box, m_conversion.formatLabel(), m_conversion.formatCode()));
    FoldVaultRoot(*field.box, *m_setting.vault);
}

void COutputFileDetailsPageDlg::showEvent(QShowEvent* event)
{
    Page::showEvent(event);
    OnTokenTextChanged(*m_primary.box);
    OnTokenTextChanged(*m_secondary.box);
}

void COutputFileDetailsPageDlg::load(const ObjectRef& task)
{
    m_logFolder->load(task);
    if (const auto path = readText(task, u"OutputPath"))
        m_primary.box->mvSetText(*path);
    if (const auto path = readText(task, u"OutputPath2"))
        m_secondary.box->mvSetText(*path);
    m_refToSource->setChecked(readBoolean(task, u"RefToSource").value_or(false));
    const bool replace = readBoolean(task, u"ReplaceOutput").value_or(true);
    (replace ? m_replace : m_newVersion)->setChecked(true);
    m_promptOutput->setChecked(readBoolean(task, u"PromptOutput").value_or(false));
}

void COutputFileDetailsPageDlg::save(const ObjectRef& task)
{
    const Text primary = m_primary.box->moGetText();
    const Text secondary = m_secondary.box->moGetText();
    CollectUsedVariables(primary, secondary, m_variables, m_usedVariables);

    m_logFolder->save(task);
    writeVariable(task, u"OutputPath", Value(primary));
    writeVariable(task, u"OutputPath2", Value(secondary));
    writeVariable(task, u"RefToSource", Value(m_refToSource->isChecked()));
    writeVariable(task, u"ReplaceOutput", Value(m_replace->isChecked()));
    writeVariable(task, u"PromptOutput", Value(m_promptOutput->isChecked()));
    writeVariable(task, u"UsedVariables", Value(JoinVariableNames(m_usedVariables)));
}

} // namespace zn
