#include "arkin/desktop/explorer/FileDetails.h"

#include "arkin/desktop/explorer/VersionMenu.h"
#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/RunTexts.h"
#include "arkin/store/CheckOut.h"

#include <memory>
#include <QHeaderView>
#include <QTimer>
#include <QTreeWidget>

namespace zn::arkin {

namespace {

void addRow(QTreeWidget& list, const QStringList& texts, const QVariant& data = {})
{
    auto* const row = new QTreeWidgetItem(&list, texts);
    row->setData(0, Qt::UserRole, data);
}

constexpr const char16_t* ownCard = u"@"; ///< the file's own, not a configuration's
constexpr int valueColumn = 2;

void addCardRow(
    QTreeWidget& list, const Variable& variable, const zn::Text& configuration, const zn::Text& value, bool writable)
{
    auto* const row = new QTreeWidgetItem(
        &list, {shown(variable.name), configuration == ownCard ? QString() : shown(configuration), shown(value)});
    row->setData(0, Qt::UserRole, variable.id);
    row->setData(1, Qt::UserRole, shown(configuration));
    row->setFlags(writable ? row->flags() | Qt::ItemIsEditable : row->flags());
}

} // namespace

FileDetails::FileDetails(const DailyHost& host, QWidget* parent)
    : QTabWidget(parent)
    , m_host(host)
    , m_vault(*host.tasks.opened)
    , m_versions(addList("versions", "Versions", {"Version", "Time", "User", "State", "Comment"}))
    , m_card(addList("card", "Card", {"Variable", "Configuration", "Value"}))
    , m_references(addList("references", "References", {"File", "Version", "How"}))
    , m_runs(addList("fileRuns", "Runs", {"Run", "Task", "Launched", "How", "Result"}))
{
    setUsesScrollButtons(false); // all titles are in sight
    setObjectName("fileDetails");
    connect(this, &QTabWidget::currentChanged, this, [this] { fill(); });
    m_versions->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_versions, &QTreeWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        inSlot(this, [&] {
            if (m_place && chosenVersion() != 0
                && showVersionMenu(m_host, this, *m_place, chosenVersion(), m_versions->viewport()->mapToGlobal(at)))
                whenChanged();
        });
    });
    // Only values can be written; the other columns name them.
    m_card->setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(m_card, &QTreeWidget::itemActivated, m_card,
        [this](QTreeWidgetItem* row) { m_card->editItem(row, valueColumn); });
    connect(m_card, &QTreeWidget::itemChanged, this, [this](const QTreeWidgetItem* row) {
        // The list is filled anew, which its editor must not see.
        QTimer::singleShot(0, this, [this, copy = std::shared_ptr<QTreeWidgetItem>(row->clone())] {
            inSlot(this, [&] { writeCardValue(*copy); });
        });
    });
    connect(m_runs, &QTreeWidget::itemActivated, this, [this](const QTreeWidgetItem* row) {
        if (showRun)
            showRun(row->data(0, Qt::UserRole).toInt());
    });
    connect(m_versions, &QTreeWidget::currentItemChanged, this, [this] {
        if (whenChosen)
            whenChosen();
    });
}

QTreeWidget* FileDetails::addList(const char* name, const char* title, std::initializer_list<const char*> columns)
{
    auto* const list = new QTreeWidget;
    list->setObjectName(name);
    list->setAccessibleName(own(title));
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    QStringList headings;
    for (const char* column : columns)
        headings << own(column);
    list->setHeaderLabels(headings);
    giveTitlesRoom(*list);
    addTab(list, own(title));
    return list;
}

void FileDetails::setFile(const std::optional<Place>& place)
{
    m_place = place;
    setEnabled(place.has_value());
    fill();
}

void FileDetails::fill()
{
    inSlot(this, [this] {
        for (QTreeWidget* list : {m_versions, m_card, m_references, m_runs})
            list->clear();
        if (!m_place)
            return;
        if (currentWidget() == m_versions)
            fillVersions(*m_place);
        else if (currentWidget() == m_card)
            fillCard(*m_place);
        else if (currentWidget() == m_references)
            fillReferences(*m_place);
        else
            fillRuns(*m_place);
        auto* const list = static_cast<QTreeWidget*>(currentWidget());
        for (int column = 0; column + 1 < list->columnCount(); ++column)
            list->resizeColumnToContents(column);
        giveTitlesRoom(*list);
    });
}

void FileDetails::fillVersions(const Place& place)
{
    const auto versions = m_vault.files().history(place.fileId);
    for (auto version = versions.rbegin(); version != versions.rend(); ++version) {
        const VersionRow& row = *version;
        addRow(*m_versions,
            {QString::number(row.version), momentText(row.madeAt), shown(row.user), shown(row.state),
                shown(row.comment)},
            row.version);
    }
}

void FileDetails::fillCard(const Place& place)
{
    const QSignalBlocker quiet(m_card);
    const auto checkOut = m_vault.files().checkOut(place.fileId);
    const bool mine = checkOut && m_vault.isMine(*checkOut);
    const std::int32_t version
        = mine && checkOut->cardOpen ? checkOut->versionToCome() : m_vault.file(place.fileId).latestVersion;
    const auto values = m_vault.cards().values(place.fileId, version);
    for (const Variable& variable : m_vault.cards().variables()) {
        bool hasOwn = false;
        for (const CardValue& value : values) {
            if (value.variableId != variable.id)
                continue;
            hasOwn = hasOwn || value.configuration == ownCard;
            addCardRow(*m_card, variable, value.configuration, value.value.toText(), mine);
        }
        if (mine && !hasOwn)
            addCardRow(*m_card, variable, ownCard, {}, mine);
    }
}

void FileDetails::writeCardValue(const QTreeWidgetItem& row)
{
    const CardWrite write{m_place->fileId, row.data(0, Qt::UserRole).toInt(),
        typed(row.data(1, Qt::UserRole).toString()), zn::Value(typed(row.text(valueColumn)))};
    const Failure outcome = writeCards(m_vault, {&write, 1}).front();
    if (outcome.status != zn::S_OK)
        tell(this, shown(outcome.sentence));
    fill();
}

void FileDetails::fillReferences(const Place& place)
{
    const auto add = [this](std::int32_t fileId, std::int32_t version, const char* how) {
        addRow(*m_references, {shown(m_vault.file(fileId).name), QString::number(version), own(how)});
    };
    for (const ReferenceRow& row : m_vault.references().from(place.fileId, m_vault.file(place.fileId).latestVersion))
        add(row.toFileId, row.toVersion, "refers to");
    for (const ReferenceRow& row : m_vault.references().to(place.fileId))
        add(row.fileId, row.version, "is referred to by");
}

void FileDetails::fillRuns(const Place& place)
{
    for (const RunOfFile& run : RunStore(m_vault.database(), m_vault.info().id).runsOf(place.fileId))
        addRow(*m_runs,
            {QString::number(run.runId), shown(run.taskName), momentText(run.launchedAt),
                run.isOutput ? own("made it") : own("read it"), outcomeWord(run.outcome)},
            run.runId);
}

std::int32_t FileDetails::chosenVersion() const
{
    const auto* item = m_versions->currentItem();
    return item && currentWidget() == m_versions ? item->data(0, Qt::UserRole).toInt() : 0;
}

} // namespace zn::arkin
