#include "addin/pages/print/FilesDlg.h"

#include "addin/pages/paths/LogFolderRow.h"
#include "addin/pages/script/ScriptPageDlg.h"
#include "addin/variables/TaskVariables.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zn {

namespace {

enum Control : int {
    ShowDialog = 301,
    SelectBox = 302,  ///< its radio buttons behind it
    VersionBox = 307, ///< likewise
    LogLabel = 311,
    LogPath = 312,
    Browse = 313,
    LogNote = 314,
    AdvancedScripting = 315,
};

using Button = std::pair<const char*, const char16_t*>;

constexpr Button selections[] = {
    {"selectNone", u"&None"},
    {"selectDrawings", u"All &drawings"},
    {"selectParts", u"&Parts and sub-assemblies only"},
    {"selectAll", u"&All parts, sub-assemblies, and drawings"},
};
constexpr int allDrawings = 1;

constexpr Button versions[] = {
    {"asBuilt", u"Use the &referenced version of referenced files (\"as built\")"},
    {"latest", u"Use the la&test version of referenced files"},
    {"promptVersion", u"Pro&mpt the user"},
};
constexpr int promptUser = 2;

constexpr const char16_t* showDialogVariable = u"__printer_showprintdlg";
constexpr const char16_t* selectVariable = u"__printer_autoselectrefstype";
constexpr const char16_t* versionVariable = u"__printer_refversiontype";

void choose(const QButtonGroup& group, std::int32_t place)
{
    if (QAbstractButton* button = group.button(place))
        button->setChecked(true);
}

} // namespace

CFilesDlg::CFilesDlg(PageEnvironment& environment, QWidget* parent, const PageSetting& setting)
    : Page(environment, parent, u"FilesDlg")
    , m_setting(setting)
    , m_showDialog(control<QCheckBox>(ShowDialog, "showDialog", u"&Show print dialog box"))
    , m_autoSelect(new QButtonGroup(this))
    , m_version(new QButtonGroup(this))
{
    m_showDialog->setChecked(true);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_showDialog);
    rows->addWidget(
        makeChoice(*m_autoSelect, SelectBox, u"References to select", "selectBox", selections, allDrawings));
    rows->addWidget(makeChoice(*m_version, VersionBox, u"Version of references", "versionBox", versions, promptUser));
    m_logFolder = makeLogFolder();
    rows->addWidget(m_logFolder);
    auto* advanced = control<QPushButton>(AdvancedScripting, "advancedScripting", u"Advanced S&cripting Options...");
    rows->addWidget(advanced, 0, Qt::AlignLeft);
    rows->addStretch();
    connect(advanced, &QPushButton::clicked, this,
        [this] { inSlot([this] { editScript(this->environment(), this, m_setting.task); }); });
    mbInitLexWnd();
    m_logFolder->fill();
}

QWidget* CFilesDlg::makeChoice(QButtonGroup& group, int number, const char16_t* title, const char* role,
    std::span<const Button> buttons, int checked)
{
    auto* box = control<QGroupBox>(number, role, title);
    auto* rows = new QVBoxLayout(box);
    int place = 0;
    for (const auto& [name, text] : buttons) {
        auto* button = control<QRadioButton>(number + 1 + place, name, text);
        group.addButton(button, place);
        rows->addWidget(button);
        ++place;
    }
    choose(group, checked);
    return box;
}

LogFolderRow* CFilesDlg::makeLogFolder()
{
    const LogFolderRow::Controls controls{
        control<QLabel>(LogLabel, "errorLogPathLabel", u"&Error log folder:"),
        control<QLineEdit>(LogPath, "errorLogPath"),
        control<QPushButton>(Browse, "browse", u"&Browse..."),
        control<QLabel>(LogNote, "errorLogNote", u"(Error log files will be named with a unique identifier.)"),
    };
    return new LogFolderRow(*this, environment(), m_setting, controls, ts(641, u"Please select a folder:"),
        LogFolderRow::Picked::BelowRoot);
}

void CFilesDlg::load(const ObjectRef& task)
{
    m_showDialog->setChecked(readBoolean(task, showDialogVariable).value_or(true));
    choose(*m_autoSelect, readInteger(task, selectVariable).value_or(allDrawings));
    choose(*m_version, readInteger(task, versionVariable).value_or(promptUser));
    m_logFolder->load(task);
}

void CFilesDlg::save(const ObjectRef& task)
{
    writeVariable(task, showDialogVariable, m_showDialog->isChecked());
    writeVariable(task, selectVariable, m_autoSelect->checkedId());
    writeVariable(task, versionVariable, m_version->checkedId());
    m_logFolder->save(task);
}

} // namespace zn
