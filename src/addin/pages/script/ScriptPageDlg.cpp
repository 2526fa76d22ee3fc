#include "addin/pages/script/ScriptPageDlg.h"

#include "addin/macro/MacroResources.h"
#include "addin/pages/frame/Images.h"
#include "addin/pages/script/InstalledVersions.h"
#include "addin/pages/script/MacroEdit.h"
#include "addin/pages/script/MacroEditor.h"
#include "addin/variables/TaskVariables.h"
#include "platform/InstalledProducts.h"
#include "platform/Platform.h"
#include "qtglue/Texts.h"

#include <algorithm>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

namespace zn {

namespace {

enum Control : int {
    MacroText = 201,
    MacroLabel = 202,
    VersionList = 203,
    VersionLabel = 204,
    KindList = 205,
    InsertMacro = 320,
    KindLabel = 321,
    ResetScript = 396,
};

constexpr const char16_t* lexName = u"ScriptPageDlg";
constexpr const char16_t* versionVariable = u"__zn_version";

struct KindRow {
    TaskKind kind;
    int number;
    const char16_t* text;
};

constexpr KindRow kindRows[] = {
    {TaskKind::Conversion, 89, u"File Conversion"},
    {TaskKind::Printing, 90, u"Printing"},
    {TaskKind::General, 91, u"General"},
};

struct InsertRow {
    int number;
    const char16_t* text;
    const char16_t* inserted;
};

constexpr InsertRow insertRows[] = {
    {23, u"Source File Name", u"<Filename>"},
    {24, u"Source File Extension", u"<Extension>"},
    {25, u"Configuration Name", u"<Configuration>"},
    {26, u"Source Folder Path", u"<Path>"},
    {27, u"Vault Root Folder Path", u"<VaultPath>"},
    {88, u"Task Instance GUID", u"<TaskInstanceGuid>"},
    {160, u"Source File Path", u"<Filepath>"},
};

// Texts of the page's own section that belong to no control; those from 1001 on are the editor's.
constexpr int scriptNotFound = 1031;
constexpr int restartDialog = 1041;
constexpr int resetQuestion = 1042;
constexpr int resetTitle = 1043;

TaskKind knownKind(std::int32_t number)
{
    const auto row = std::ranges::find(kindRows, static_cast<TaskKind>(number), &KindRow::kind);
    return row == std::end(kindRows) ? TaskKind::General : row->kind;
}

} // namespace

CScriptPageDlg::CScriptPageDlg(PageEnvironment& environment, QWidget* parent, Form form)
    : Page(environment, parent, lexName)
    , m_form(form)
    , m_editor(new MacroEditor(this))
    , m_insert(control<QPushButton>(InsertMacro, "insertMacro", u"&Insert Macro >"))
    , m_versions(control<QComboBox>(VersionList, "version"))
    , m_kinds(control<QComboBox>(KindList, "taskType"))
{
    registerControl(MacroText, &m_editor->edit(), "macro");
    if (m_form == Form::Dialog)
        m_reset = control<QPushButton>(ResetScript, "resetScript", u"&Reset...");
    makeLayout();
    fillKinds();
    m_editor->setTexts(macroEditorTexts([this](int number, const char16_t* english) { return own(number, english); }));
    mbInitLexWnd();

    connect(m_insert, &QPushButton::clicked, this, [this] { inSlot([this] { showInsertMenu(); }); });
    connect(m_kinds, &QComboBox::activated, this, [this] { inSlot([this] { kindChosen(); }); });
    if (m_reset) {
        connect(m_reset, &QPushButton::clicked, this, [this] { inSlot([this] { reset(); }); });
        connect(&m_editor->edit(), &QPlainTextEdit::textChanged, this, [this] { enableReset(true); });
    }
}

void CScriptPageDlg::makeLayout()
{
    auto* macroLabel = control<QLabel>(MacroLabel, "macroLabel", u"&Script to execute in Zentrel:");
    auto* versionLabel = control<QLabel>(VersionLabel, "versionLabel", u"Zentrel &version to use:");
    auto* kindLabel = control<QLabel>(KindLabel, "taskTypeLabel", u"&Task user interface type:");
    macroLabel->setBuddy(&m_editor->edit());
    versionLabel->setBuddy(m_versions);
    kindLabel->setBuddy(m_kinds);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_insert);
    if (m_reset)
        buttons->addWidget(m_reset);
    buttons->addStretch();
    auto* fields = new QFormLayout;
    fields->addRow(versionLabel, m_versions);
    fields->addRow(kindLabel, m_kinds);
    auto* whole = new QVBoxLayout(this);
    if (m_form == Form::Dialog)
        whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(macroLabel);
    whole->addWidget(m_editor, 1);
    whole->addLayout(buttons);
    whole->addLayout(fields);
    for (QWidget* widget : {static_cast<QWidget*>(m_insert), static_cast<QWidget*>(m_reset),
             static_cast<QWidget*>(m_versions), static_cast<QWidget*>(m_kinds)}) {
        if (widget)
            widget->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }
}

QString CScriptPageDlg::own(int number, const char16_t* defaultText) const
{
    return environment().text(number, defaultText, lexName);
}

void CScriptPageDlg::fillKinds()
{
    for (const KindRow& row : kindRows)
        m_kinds->addItem(ts(row.number, row.text), static_cast<int>(row.kind));
}

/// The versions in alphabetical order, with the default among them. A version that isn't installed leaves the first
/// entry chosen, which then is what the task gets.
void CScriptPageDlg::fillVersions()
{
    std::vector<CadVersion> versions;
    inSlot([&] { versions = cadVersions(environment().platform().products.list()); });
    versions.push_back({typed(ts(1, u"<Use default>")), 0});
    std::ranges::sort(
        versions, [](const CadVersion& a, const CadVersion& b) { return compareNoCase(a.label, b.label) < 0; });
    m_versions->clear();
    for (const CadVersion& version : versions)
        m_versions->addItem(shown(version.label), version.year);
    m_versions->setCurrentIndex(std::max(m_versions->findData(m_version), 0));
}

void CScriptPageDlg::load(const ObjectRef& task)
{
    try {
        m_script = readText(task, scriptVariable).value_or(Text());
        m_version = readInteger(task, versionVariable).value_or(0);
        m_taskType = knownKind(readInteger(task, kindVariable).value_or(0));
    } catch (...) {
        open();
        throw;
    }
    open();
}

void CScriptPageDlg::open()
{
    const Text defaultScript = LoadScriptResource(m_taskType);
    if (m_script.empty())
        m_script = defaultScript;
    m_editor->edit().setMacroText(m_script);
    enableReset(m_script != defaultScript);
    m_kinds->setCurrentIndex(m_kinds->findData(static_cast<int>(m_taskType)));
    fillVersions();
}

void CScriptPageDlg::save(const ObjectRef& task)
{
    if (m_form == Form::Page)
        Apply();
    writeVariable(task, scriptVariable, m_script);
    writeVariable(task, versionVariable, m_version);
    writeVariable(task, kindVariable, static_cast<std::int32_t>(m_taskType));
}

void CScriptPageDlg::Apply()
{
    const TaskKind kind = selectedKind();
    if (m_form == Form::Dialog && kind != m_taskType)
        replaceByDefault(kind);
    m_script = m_editor->edit().macroText();
    m_version = m_versions->currentData().toInt();
    m_taskType = kind;
}

TaskKind CScriptPageDlg::selectedKind() const { return knownKind(m_kinds->currentData().toInt()); }

void CScriptPageDlg::kindChosen()
{
    if (m_form == Form::Page && selectedKind() != m_taskType)
        replaceByDefault(selectedKind());
}

void CScriptPageDlg::replaceByDefault(TaskKind kind)
{
    m_editor->edit().replaceMacroText(LoadScriptResource(kind));
    tell(own(restartDialog, u"You must restart the task property dialog box in order to see the new user interface."));
}

void CScriptPageDlg::reset()
{
    const QString question
        = own(resetQuestion, u"Are you sure you want to discard any changes you have made to the script?");
    if (!ask(question, own(resetTitle, u"Reset")))
        return;
    m_script = LoadScriptResource(selectedKind());
    m_editor->edit().replaceMacroText(m_script);
    enableReset(false);
}

void CScriptPageDlg::enableReset(bool enable)
{
    if (m_reset)
        m_reset->setEnabled(enable);
}

void CScriptPageDlg::showInsertMenu()
{
    QMenu menu(this);
    menu.setObjectName("insertMacroMenu");
    for (const InsertRow& row : insertRows)
        menu.addAction(ts(row.number, row.text))->setData(shown(row.inserted));
    const QAction* chosen = menu.exec(m_insert->mapToGlobal(QPoint(0, m_insert->height())));
    m_editor->edit().setFocus();
    if (chosen)
        m_editor->edit().insertAtCaret(typed(chosen->data().toString()));
}

Text CScriptPageDlg::LoadScriptResource(TaskKind kind)
{
    // The macros are part of the program, which was built without one when there is no text.
    const Text macro = defaultMacro(kind);
    if (!macro.empty())
        return macro + u"\n";
    tell(own(scriptNotFound, u"Could not find Script resource!"));
    return {};
}

// --- the dialog

CScriptDlg::CScriptDlg(PageEnvironment& environment, QWidget* parent)
    : Dialog(environment, parent, u"ScriptDlg")
    , m_page(new CScriptPageDlg(environment, this, CScriptPageDlg::Form::Dialog))
{
    constexpr int ok = 1;
    constexpr int cancel = 2;
    constexpr int help = 57671;
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Help);
    registerControl(ok, buttons->button(QDialogButtonBox::Ok), "ok", u"OK");
    registerControl(cancel, buttons->button(QDialogButtonBox::Cancel), "cancel", u"Cancel");
    registerControl(help, buttons->button(QDialogButtonBox::Help), "help", u"&Help");
    connect(buttons, &QDialogButtonBox::accepted, this, &CScriptDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CScriptDlg::reject);
    connect(buttons, &QDialogButtonBox::helpRequested, this, [this] { inSlot([this] { mzbShowHelp(lexName); }); });

    auto* whole = new QVBoxLayout(this);
    whole->addWidget(m_page, 1);
    whole->addWidget(buttons);
    mbInitLexWnd(u"Advanced Scripting Options");
    setWindowIcon(image("PNG_FILE"));
    setSizeGripEnabled(true);
    const QFontMetrics metrics(font());
    resize(metrics.averageCharWidth() * 110, metrics.height() * 40);
}

void CScriptDlg::accept()
{
    inSlot([this] {
        m_page->Apply();
        Dialog::accept();
    });
}

bool editScript(PageEnvironment& environment, QWidget* parent, const ObjectRef& task)
{
    CScriptDlg dialog(environment, parent);
    dialog.page().load(task);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    dialog.page().save(task);
    return true;
}

} // namespace zn
