#include "addin/pages/paths/LogFolderRow.h"

#include "addin/pages/frame/PageEnvironment.h"
#include "addin/variables/TaskVariables.h"
#include "qtglue/Texts.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace zn {

namespace {

constexpr const char16_t* logVariable = u"ErrorLogPath";

} // namespace

LogFolderRow::LogFolderRow(QWidget& page, PageEnvironment& environment, const PageSetting& setting,
    const Controls& controls, const QString& browseTitle, Picked picked)
    : QWidget(&page)
    , m_page(page)
    , m_environment(environment)
    , m_setting(setting)
    , m_path(controls.path)
    , m_browseTitle(browseTitle)
    , m_picked(picked)
{
    controls.note->setWordWrap(true);
    controls.label->setBuddy(controls.path);
    connect(controls.browse, &QPushButton::clicked, this,
        [this] { m_environment.messages().inSlot(&m_page, [this] { browse(); }); });
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(controls.label, 0, 0, 1, 2);
    grid->addWidget(controls.path, 1, 0);
    grid->addWidget(controls.browse, 1, 1);
    grid->addWidget(controls.note, 2, 0, 1, 2);
}

void LogFolderRow::fill()
{
    const auto properties = query<IArkTaskProperties>(m_setting.task);
    if (!properties)
        throw StatusError(E_POINTER);
    Text taskName;
    checkStatus(properties->GetTaskName(taskName));
    m_path->setText(QStringLiteral("\\%1\\%2").arg(m_environment.text(135, u"Logs"), shown(taskName)));
}

void LogFolderRow::browse()
{
    std::shared_ptr<IArkFolder> folder;
    const Status status = m_setting.vault->BrowseForFolder(handleOf(m_page), typed(m_browseTitle), folder);
    checkStatus(status);
    if (status != S_OK || !folder)
        return;
    Text path;
    checkStatus(folder->GetLocalPath(path));
    m_path->setText(shown(m_picked == Picked::BelowRoot ? belowRoot(path) : path));
}

/// A path outside the vault stays whole.
Text LogFolderRow::belowRoot(const Text& path) const
{
    Text root;
    checkStatus(m_setting.vault->GetRootFolderPath(root));
    while (root.ends_with(u'\\'))
        root.pop_back();
    const bool isBelow = equalNoCase(TextView(path).substr(0, root.size()), root)
        && (path.size() <= root.size() || path[root.size()] == u'\\');
    return isBelow ? path.substr(root.size()) : path;
}

void LogFolderRow::load(const ObjectRef& task)
{
    if (const auto path = readText(task, logVariable))
        m_path->setText(shown(*path));
}

void LogFolderRow::save(const ObjectRef& task) { writeVariable(task, logVariable, typed(m_path->text())); }

} // namespace zn
