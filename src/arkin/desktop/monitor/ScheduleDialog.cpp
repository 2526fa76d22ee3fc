#include "arkin/desktop/monitor/ScheduleDialog.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/ScheduleTexts.h"
#include "arkin/store/Vault.h"

#include <algorithm>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimeEdit>
#include <QTimeZone>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

constexpr int severalFiles = 10; // as the vault counts it

QPushButton* addButton(QBoxLayout& row, const char* name, const QString& text)
{
    auto* const button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);
    row.addWidget(button);
    return button;
}

} // namespace

ScheduleDialog::ScheduleDialog(const DailyHost& host, QWidget* parent)
    : QDialog(parent)
    , m_host(host)
    , m_task(new QComboBox)
    , m_items(new QListWidget)
    , m_time(new QTimeEdit(QTime(22, 0)))
    , m_zone(new QLineEdit(QString::fromStdString(zoneHere())))
    , m_onlyChanged(new QCheckBox(own("Only what has changed &since its last outputs")))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    m_buttons->setObjectName("buttons");
    setObjectName("newSchedule");
    setWindowTitle(own("New Schedule"));
    m_task->setObjectName("task");
    for (const TaskDefinition& task : TaskStore(host.tasks.database, host.tasks.vaultId).list())
        m_task->addItem(shown(task.name));
    auto* const layout = new QVBoxLayout(this);
    auto* const fields = new QFormLayout;
    fields->addRow(own("&Task:"), m_task);
    layout->addLayout(fields);
    addItems(*layout);
    addTime(*layout);
    m_onlyChanged->setObjectName("onlyChanged");
    layout->addWidget(m_onlyChanged);
    layout->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &ScheduleDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showState();
}

void ScheduleDialog::addItems(QVBoxLayout& layout)
{
    auto* const label = new QLabel(own("&On these files and folders:"));
    label->setBuddy(m_items);
    layout.addWidget(label);
    m_items->setObjectName("items");
    m_items->setSelectionMode(QListWidget::ExtendedSelection);
    layout.addWidget(m_items, 1);
    auto* const row = new QHBoxLayout;
    auto* const files = addButton(*row, "addFiles", own("Add &Files …"));
    auto* const folder = addButton(*row, "addFolder", own("Add Fol&der …"));
    auto* const remove = addButton(*row, "removeItems", own("&Leave Out"));
    row->addStretch();
    layout.addLayout(row);
    connect(files, &QPushButton::clicked, this, [this] { inSlot(this, [this] { addFiles(); }); });
    connect(folder, &QPushButton::clicked, this, [this] { inSlot(this, [this] { addFolder(); }); });
    connect(remove, &QPushButton::clicked, this, [this] { inSlot(this, [this] { removeItems(); }); });
}

void ScheduleDialog::addTime(QVBoxLayout& layout)
{
    m_time->setObjectName("time");
    m_time->setDisplayFormat("HH:mm");
    m_zone->setObjectName("zone");
    QStringList zones;
    for (const QByteArray& zone : QTimeZone::availableTimeZoneIds())
        zones << QString::fromLatin1(zone);
    auto* const completer = new QCompleter(zones, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    m_zone->setCompleter(completer);
    auto* const fields = new QFormLayout;
    fields->addRow(own("&At:"), m_time);
    fields->addRow(own("On the &clocks of:"), m_zone);
    auto* const days = new QHBoxLayout;
    m_days.resize(7);
    for (int place = 0; place < 7; ++place) {
        const int day = (place + 1) % 7; // a week as it is written begins with Monday
        auto* const box = new QCheckBox(dayWord(day));
        box->setObjectName(QStringLiteral("day%1").arg(day));
        box->setChecked(true);
        connect(box, &QCheckBox::toggled, this, [this] { showState(); });
        days->addWidget(box);
        m_days[static_cast<std::size_t>(day)] = box;
    }
    fields->addRow(own("Days:"), days);
    layout.addLayout(fields);
}

void ScheduleDialog::addFiles()
{
    std::vector<zn::Text> paths;
    const auto status = m_host.tasks.vault->BrowseForFile(zn::handleOf(*this), severalFiles,
        typed(own("Files of the Schedule")), typed(own("All files")) + u"|*|", paths);
    if (zn::failed(status))
        throw zn::StatusError(status, describeStatus(m_host.tasks, status));
    for (const zn::Text& path : paths)
        addItem(path);
}

void ScheduleDialog::addFolder()
{
    std::shared_ptr<zn::IArkFolder> folder;
    const auto status
        = m_host.tasks.vault->BrowseForFolder(zn::handleOf(*this), typed(own("Folder of the Schedule")), folder);
    if (zn::failed(status))
        throw zn::StatusError(status, describeStatus(m_host.tasks, status));
    zn::Text path;
    if (folder && !zn::failed(folder->GetLocalPath(path)))
        addItem(path);
}

void ScheduleDialog::addItem(const zn::Text& path)
{
    Vault& vault = *m_host.tasks.opened;
    zn::ArkSelItem item;
    item.version = -1;
    item.path = path;
    if (const auto place = vault.find(path)) {
        item.fileId = place->fileId;
        item.folderId = place->folderId;
    } else if (const auto folder = vault.findFolder(path)) {
        item.itemType = zn::ArkItemType::Folder;
        item.folderId = *folder;
    } else {
        throw zn::StatusError(zn::E_INVALIDARG, "The vault doesn't have " + zn::toUtf8(path) + " any more.");
    }
    if (std::ranges::any_of(m_schedule.items, [&](const zn::ArkSelItem& known) { return known.path == path; }))
        return;
    m_schedule.items.push_back(item);
    m_items->addItem(shown(m_host.tasks.files.toMachine(path).string()));
    showState();
}

void ScheduleDialog::removeItems()
{
    for (int row = m_items->count() - 1; row >= 0; --row) {
        if (!m_items->item(row)->isSelected())
            continue;
        delete m_items->takeItem(row);
        m_schedule.items.erase(m_schedule.items.begin() + row);
    }
    showState();
}

void ScheduleDialog::showState()
{
    m_buttons->button(QDialogButtonBox::Ok)
        ->setEnabled(m_task->count() > 0 && !m_schedule.items.empty() && time().days != 0);
}

ScheduleTime ScheduleDialog::time() const
{
    ScheduleTime time{m_time->time().hour() * 60 + m_time->time().minute(), 0, m_zone->text().trimmed().toStdString()};
    for (std::size_t day = 0; day < m_days.size(); ++day)
        time.days |= m_days[day]->isChecked() ? 1 << day : 0;
    return time;
}

void ScheduleDialog::accept()
{
    inSlot(this, [&] {
        m_schedule.time = time();
        m_schedule.onlyChanged = m_onlyChanged->isChecked();
        m_schedule.taskName = typed(m_task->currentText());
        m_schedule.userName = m_host.tasks.userName;
        m_schedule.createdAt = m_host.tasks.clock.now();
        m_schedule.nextAt = nextTime(m_schedule.time, m_schedule.createdAt);
        QDialog::accept();
    });
}

} // namespace zn::arkin
