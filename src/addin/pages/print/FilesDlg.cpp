#include "addin/pages/print/FilesDlg.h"

#include "addin/pages/frame/MessageBoxes.h"
#include "addin/pages/frame/Strings.h"
#include "addin/pages/script/ScriptPageDlg.h"
#include "addin/variables/TaskVariables.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

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
constexpr const char16_t* logVariable = u"ErrorLogPath";

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
    , m_logPath(nullptr)
{
    m_showDialog->setChecked(true);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_showDialog);
    rows->addWidget(
        makeChoice(*m_autoSelect, SelectBox, u"References to select", "selectBox", selections, allDrawings));
    rows->addWidget(makeChoice(*m_version, VersionBox, u"Version of references", "versionBox", versions, promptUser));
    rows->addWidget(makeLogRow());
    auto* advanced = control<QPushButton>(AdvancedScripting, "advancedScripting", u"Advanced S&cripting Options...");
    rows->addWidget(advanced, 0, Qt::AlignLeft);
    rows->addStretch();
    connect(advanced, &QPushButton::clicked, this,
        [this] { inSlot(this, [this] { editScript(this->environment(), this, m_setting.task); }); });
    mbInitLexWnd();
    m_logPath->setText(shown(defaultLogPath()));
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

QWidget* CFilesDlg::makeLogRow()
{
    auto* row = new QWidget(this);
    auto* label = control<QLabel>(LogLabel, "errorLogPathLabel", u"&Error log folder:");
    m_logPath = control<QLineEdit>(LogPath, "errorLogPath");
    auto* button = control<QPushButton>(Browse, "browse", u"&Browse...");
    auto* note = control<QLabel>(LogNote, "errorLogNote", u"(Error log files will be named with a unique identifier.)");
    note->setWordWrap(true);
    label->setBuddy(m_logPath);
    connect(button, &QPushButton::clicked, this, [this] { inSlot(this, [this] { browse(); }); });
    auto* grid = new QGridLayout(row);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(label, 0, 0, 1, 2);
    grid->addWidget(m_logPath, 1, 0);
    grid->addWidget(button, 1, 1);
    grid->addWidget(note, 2, 0, 1, 2);
    return row;
}

Text CFilesDlg::defaultLogPath()
{
    const auto properties = query<IArkTaskProperties>(m_setting.task);
    if (!properties)
        throw StatusError(E_POINTER);
    Text taskName;
    checkStatus(properties->GetTaskName(taskName));
    return u"\\" + typed(ts(135, u"Logs")) + u"\\" + taskName;
}

/// Stores a path below the vault's root, so that it holds wherever the vault's local view lies.
void CFilesDlg::browse()
{
    std::shared_ptr<IArkFolder> folder;
    const Status status
        = m_setting.vault->BrowseForFolder(handleOf(*this), typed(ts(641, u"Please select a folder:")), folder);
    checkStatus(status);
    if (status != S_OK || !folder)
        return;
    Text path;
    Text root;
    checkStatus(folder->GetLocalPath(path));
    checkStatus(m_setting.vault->GetRootFolderPath(root));
    while (root.ends_with(u'\\'))
        root.pop_back();
    const bool below = equalNoCase(TextView(path).substr(0, root.size()), root)
        && (path.size() <= root.size() || path[root.size()] == u'\\');
    m_logPath->setText(shown(below ? TextView(path).substr(root.size()) : TextView(path)));
}

void CFilesDlg::load(const ObjectRef& task)
{
    m_showDialog->setChecked(readBoolean(task, showDialogVariable).value_or(true));
    choose(*m_autoSelect, readInteger(task, selectVariable).value_or(allDrawings));
    choose(*m_version, readInteger(task, versionVariable).value_or(promptUser));
    if (const auto path = readText(task, logVariable))
        m_logPath->setText(shown(*path));
}

void CFilesDlg::save(const ObjectRef& task)
{
    writeVariable(task, showDialogVariable, m_showDialog->isChecked());
    writeVariable(task, selectVariable, m_autoSelect->checkedId());
    writeVariable(task, versionVariable, m_version->checkedId());
    writeVariable(task, logVariable, typed(m_logPath->text()));
}

} // namespace zn
