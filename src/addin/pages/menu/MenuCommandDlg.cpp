#include "addin/pages/menu/MenuCommandDlg.h"

#include "addin/variables/TaskVariables.h"
#include "qtglue/Texts.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace zn {

namespace {

enum Control : int {
    ShowCommand = 301,
    TitleLabel = 302,
    TitleEdit = 303,
    DescriptionLabel = 304,
    DescriptionEdit = 305
};

constexpr int longestTitle = 255;
constexpr int longestDescription = 1020;
constexpr const char16_t* displayVariable = u"__menucmd_display";

struct LookedUp {
    int number;
    const char16_t* text;
};

struct KindTexts {
    TaskKind kind;
    LookedUp title;
    LookedUp description;
};

const KindTexts kindTexts[] = {
    {TaskKind::Conversion, {136, u"Convert Files"}, {139, u"Converts ZENTREL files from one format to another"}},
    {TaskKind::Printing, {137, u"Print Files"}, {140, u"Prints selected documents with ZENTREL"}},
    {TaskKind::General, {138, u"Execute Script"}, {141, u"Executes script on selected documents"}},
};

const KindTexts& textsOf(TaskKind kind)
{
    for (const KindTexts& row : kindTexts) {
        if (row.kind == kind)
            return row;
    }
    return kindTexts[std::size(kindTexts) - 1];
}

/// A text that is longer than its edit shows its beginning.
void showFromStart(QLineEdit& edit, const QString& text)
{
    edit.setText(text);
    edit.setCursorPosition(0);
}

} // namespace

CMenuCommandDlg::CMenuCommandDlg(PageEnvironment& environment, QWidget* parent, TaskKind kind)
    : Page(environment, parent, u"MenuCommandDlg")
    , m_kind(kind)
    , m_show(control<QCheckBox>(ShowCommand, "showCommand", u"&Display a menu command in the explorer for this task"))
    , m_title(control<QLineEdit>(TitleEdit, "menuTitle"))
    , m_description(control<QLineEdit>(DescriptionEdit, "menuDescription"))
{
    m_title->setMaxLength(longestTitle);
    m_description->setMaxLength(longestDescription);

    auto* fields = new QFormLayout;
    auto* titleLabel = control<QLabel>(TitleLabel, "menuTitleLabel", u"&Menu command:");
    auto* descriptionLabel = control<QLabel>(DescriptionLabel, "menuDescriptionLabel", u"&Status bar help text:");
    titleLabel->setBuddy(m_title);
    descriptionLabel->setBuddy(m_description);
    fields->addRow(titleLabel, m_title);
    fields->addRow(descriptionLabel, m_description);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(m_show);
    whole->addLayout(fields);
    whole->addStretch();

    connect(m_show, &QCheckBox::toggled, this, [this] { enableTexts(); });
    mbInitLexWnd();
    enableTexts();
}

void CMenuCommandDlg::load(const ObjectRef& task)
{
    const bool shownByDefault = m_kind == TaskKind::Conversion || m_kind == TaskKind::Printing;
    m_show->setChecked(readBoolean(task, displayVariable).value_or(shownByDefault));
    loadTexts(task);
    enableTexts();
}

void CMenuCommandDlg::loadTexts(const ObjectRef& task)
{
    const auto properties = query<IArkTaskProperties>(task);
    if (!properties)
        throw StatusError(E_POINTER);
    std::vector<ArkMenuCmd> entries;
    checkStatus(properties->GetMenuCmds(entries));
    if (entries.empty()) {
        const KindTexts& texts = textsOf(m_kind);
        showFromStart(*m_title, ts(texts.title.number, texts.title.text));
        showFromStart(*m_description, ts(texts.description.number, texts.description.text));
        return;
    }
    if (entries.front().menuText)
        showFromStart(*m_title, shown(*entries.front().menuText));
    if (entries.front().statusText)
        showFromStart(*m_description, shown(*entries.front().statusText));
}

void CMenuCommandDlg::enableTexts()
{
    m_title->setEnabled(m_show->isChecked());
    m_description->setEnabled(m_show->isChecked());
}

bool CMenuCommandDlg::validate()
{
    if (!m_show->isChecked() || !m_title->text().trimmed().isEmpty())
        return true;
    tell(ts(134, u"Please enter menu command."));
    m_title->setFocus();
    return false;
}

void CMenuCommandDlg::save(const ObjectRef& task) { writeVariable(task, displayVariable, m_show->isChecked()); }

MenuChoice CMenuCommandDlg::choice() const
{
    return {m_show->isChecked(), typed(m_title->text()), typed(m_description->text())};
}

} // namespace zn
