#include "arkin/desktop/explorer/FileFilterBox.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/store/LocalStatus.h"

namespace zn::arkin {

namespace {

enum Kind { All, Mine, ChangedHere, OutOfDate, WithoutOutput };

using FileIds = std::unordered_set<std::int32_t>;

FileIds mineOf(const std::string& user, const std::vector<ListedFile>& files)
{
    FileIds ids;
    for (const ListedFile& file : files)
        if (file.checkedOutBy == user)
            ids.insert(file.fileId);
    return ids;
}

FileIds locally(Vault& vault, std::int32_t folderId, LocalState state)
{
    FileIds ids;
    for (const FileStatus& status : localStatus(vault, folderId))
        if (status.place.folderId == folderId && status.local == state)
            ids.insert(status.place.fileId);
    return ids;
}

FileIds withoutOutput(RunStore runs, zn::TextView task, const std::vector<ListedFile>& files)
{
    const auto made = runs.versionsWithOutputs(task);
    FileIds ids;
    for (const ListedFile& file : files) {
        const auto known = made.find(file.fileId);
        if (known == made.end() || known->second < file.latestVersion)
            ids.insert(file.fileId);
    }
    return ids;
}

} // namespace

FileFilterBox::FileFilterBox(const DailyHost& host, QWidget* parent)
    : QComboBox(parent)
    , m_host(host)
{
    setObjectName("filter");
    setAccessibleName(own("Show"));
    addItem(own("All files"), All);
    addItem(own("Checked out by me"), Mine);
    addItem(own("Changed here"), ChangedHere);
    addItem(own("Out of date here"), OutOfDate);
    for (const TaskDefinition& task : TaskStore(host.tasks.database, host.tasks.vaultId).list()) {
        addItem(own("Without an output of “%1”").arg(zn::shown(task.name)), WithoutOutput);
        setItemData(count() - 1, zn::shown(task.name), Qt::UserRole + 1);
    }
}

std::optional<FileIds> FileFilterBox::fitting(std::int32_t folderId, const std::vector<ListedFile>& files) const
{
    Vault& vault = *m_host.tasks.opened;
    switch (currentData().toInt()) {
    case Mine:
        return mineOf(vault.caller().user, files);
    case ChangedHere:
        return locally(vault, folderId, LocalState::Changed);
    case OutOfDate:
        return locally(vault, folderId, LocalState::Older);
    case WithoutOutput:
        return withoutOutput(
            {m_host.tasks.database, m_host.tasks.vaultId}, typed(currentData(Qt::UserRole + 1).toString()), files);
    default:
        return {};
    }
}

} // namespace zn::arkin
