#include "arkin/desktop/monitor/SchedulesPage.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/RunTexts.h"
#include "arkin/desktop/monitor/ScheduleDialog.h"
#include "arkin/desktop/monitor/ScheduleTexts.h"

#include <algorithm>
#include <QAction>
#include <QMessageBox>
#include <QShowEvent>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zn::arkin {

SchedulesPage::SchedulesPage(const DailyHost& host, QWidget* parent)
    : QWidget(parent)
    , m_host(host)
    , m_bar(new QToolBar)
    , m_list(new QTreeWidget)
{
    setObjectName("schedulesPage");
    m_list->setObjectName("schedules");
    m_list->setAccessibleName(own("Schedules"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setSelectionMode(QTreeWidget::ExtendedSelection);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_list->setHeaderLabels({own("Task"), own("When"), own("Next Time"), own("Last Time"), own("Run"), own("User"),
        own("Files"), own("Messages")});
    const int unit = fontMetrics().averageCharWidth();
    int column = 0;
    for (const int width : {20, 34, 26, 26, 8, 12, 50})
        m_list->setColumnWidth(column++, width * unit);
    giveTitlesRoom(*m_list);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_bar);
    layout->addWidget(m_list, 1);
    makeActions();
}

void SchedulesPage::makeActions()
{
    auto* const adding = m_bar->addAction(own("&New Schedule …"));
    adding->setObjectName("addSchedule");
    m_remove = m_bar->addAction(own("Re&move Schedule …"));
    m_remove->setObjectName("removeSchedule");
    m_remove->setEnabled(false);
    m_list->addActions({adding, m_remove});
    connect(adding, &QAction::triggered, this, [this] { inSlot(this, [this] { add(); }); });
    connect(m_remove, &QAction::triggered, this, [this] { inSlot(this, [this] { remove(); }); });
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, [this] { m_remove->setEnabled(!chosen().empty()); });
    connect(m_list, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* row) {
        inSlot(this, [&] {
            const auto& schedule = m_schedules.at(static_cast<std::size_t>(m_list->indexOfTopLevelItem(row)));
            if (schedule.lastRun != 0)
                runWanted(schedule.lastRun);
        });
    });
}

void SchedulesPage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_turn = -1;
    if (changed)
        changed();
}

void SchedulesPage::look(std::int64_t turn)
{
    if (!isVisible() || turn == m_turn)
        return;
    const auto before = chosen();
    m_schedules = ScheduleStore(m_host.tasks.database, m_host.tasks.vaultId).list();
    m_turn = turn;
    fill();
    for (std::size_t i = 0; i < m_schedules.size(); ++i)
        m_list->topLevelItem(static_cast<int>(i))->setSelected(std::ranges::any_of(before, [&](const auto& old) {
            return old.id == m_schedules[i].id;
        }));
}

void SchedulesPage::fill()
{
    m_list->clear();
    for (const Schedule& schedule : m_schedules) {
        QStringList places;
        for (const auto& item : schedule.items)
            places << shown(m_host.tasks.files.toMachine(item.path).string());
        auto* const row = new QTreeWidgetItem(m_list,
            {shown(schedule.taskName),
                schedule.onlyChanged ? own("%1, only what changed").arg(whenText(schedule.time))
                                     : whenText(schedule.time),
                momentText(schedule.nextAt), momentText(schedule.lastAt),
                schedule.lastRun == 0 ? QString() : QString::number(schedule.lastRun), shown(schedule.userName),
                places.join(QStringLiteral(", ")), textOf(schedule)});
        row->setToolTip(6, places.join('\n'));
        row->setToolTip(7, row->text(7));
    }
}

QString SchedulesPage::textOf(const Schedule& schedule) const
{
    if (!TaskStore(m_host.tasks.database, m_host.tasks.vaultId).find(schedule.taskName))
        return own("The task is deleted.");
    return QString::fromStdString(schedule.lastSentence);
}

std::vector<Schedule> SchedulesPage::chosen() const
{
    std::vector<Schedule> schedules;
    for (std::size_t i = 0; i < m_schedules.size(); ++i)
        if (m_list->topLevelItem(static_cast<int>(i))->isSelected())
            schedules.push_back(m_schedules[i]);
    return schedules;
}

void SchedulesPage::add()
{
    ScheduleDialog dialog(m_host, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    ScheduleStore(m_host.tasks.database, m_host.tasks.vaultId).add(dialog.schedule());
    changed();
}

void SchedulesPage::remove()
{
    const auto schedules = chosen();
    const QString question = schedules.size() == 1
        ? own("Remove the schedule of “%1”? Runs that it has launched stay.").arg(shown(schedules[0].taskName))
        : own("Remove %1 schedules? Runs that they have launched stay.").arg(schedules.size());
    if (QMessageBox::question(this, own("Remove Schedule"), question) != QMessageBox::Yes)
        return;
    ScheduleStore store(m_host.tasks.database, m_host.tasks.vaultId);
    for (const Schedule& schedule : schedules)
        store.remove(schedule.id);
    changed();
}

} // namespace zn::arkin
