#pragma once

#include "addin/files/OutputRecord.h"
#include "addin/files/SavedFileNotes.h"
#include "base/Object.h"
#include "contracts/host/ArkBatch.h"
#include "contracts/host/ArkVault.h"
#include "platform/Platform.h"

#include <functional>
#include <unordered_map>
#include <unordered_set>

namespace zn {

/// Writes a host failure, with what was being done, to the task's log.
using HostErrorLog = std::function<void(Status, const Text&)>;

/// The file list of a run and all that happens between it and the vault. Used on the thread on which the host calls
/// the add-in, inside the CAD application's event callbacks too. A `task` is an object with `IArkTaskProperties` or
/// `IArkTaskInstance`.
class FileLogic : public SavedFileNotes {
public:
    explicit FileLogic(const Platform& platform);

    /// Empties the list, takes the vault and asks it for its root path. The host's status; on a failure the other
    /// fields are set all the same.
    Status Initialize(std::shared_ptr<IArkVault> vault, TaskKind taskKind, bool replaceExisting);

    /// The input record to which saved and printed files are credited from now on; not owned.
    void SetCurrentSource(OutputRecord* record);

    // --- the lists in the task's variables (FileLists.cpp)

    /// Without a selection the records go to `__output_list`. With one, the records are replaced by copies of the
    /// selection's and go to `__selection_list`. 0 or the failure of the write.
    Status WriteList(const ObjectRef& task, TaskKind kind, const SelectionRecords* selection);
    /// Appends the stored records. The status of reading the variable: 1 when it was never written.
    /// Raises on text that is no such list.
    Status ReadList(const ObjectRef& task, std::vector<OutputRecord>& records, bool outputList);

    /// Whether a hidden record has a file on disk, by which the report knows of a log.
    bool HasHiddenFile();
    /// Records of files (not printouts) inside the vault (or anywhere) that exist on disk.
    std::int32_t CountResultFiles(bool includeHidden, bool includeOutside);
    /// The vault's documents of the records that exist on disk inside the vault. 0 or the first failure, with what
    /// was collected so far.
    Status CollectResultFiles(std::vector<ArkTaskResultDoc>& documents, bool includeHidden);

    // --- the host's selection (Expansion.cpp)

    /// Turns the host's selection into input records, folders into their files. With `fetchFiles` the files and what
    /// they refer to are brought to the disk and the latest versions are learned. Failures are raised.
    void ExpandSelection(IArkVault& vault, const ObjectRef& task, const ArkSelection& items,
        SelectionRecords& selection, bool fetchFiles);
    /// Fills `latestVersion` of each record that the vault has, by one query. The host's status.
    Status FillLatestVersions(IArkVault& vault, std::vector<OutputRecord>& records);

    // --- results (Results.cpp, AddResults.cpp)

    void NoteSavedFile(TextView path, TextView configuration, bool hidden) override;
    void NotePrintedItem(TextView printer, TextView configuration) override;
    /// Checks a log out that a former run of the same instance left in the vault.
    void PrepareLogFile(const Text& path);
    /// Adds what was saved to the vault in one batch, fills cards and references, checks everything in.
    /// Failures are written to the log and returned, or raised.
    Status AddResultsToVault(IArkVault& vault, const ObjectRef& task, const HostErrorLog& log);
    /// Adds or checks in the run's log and notes it as a hidden record. 1 if there is no such file.
    Status CommitLogFile(const Text& path);

    // --- permissions (Permissions.cpp)

    /// Whether the user may read the file; "<VaultPath>" in the path is the vault's root. A path that isn't the
    /// vault's counts as readable.
    bool CanReadVaultFile(const Text& path);

    const std::vector<OutputRecord>& records() const { return m_records; }

private:
    void AddFolderFiles(IArkFolder& folder, SelectionRecords& selection);
    bool PullsReferencedVersions(const ObjectRef& task);
    void FetchFiles(IArkVault& vault, const ObjectRef& task, SelectionRecords& selection);

    void RemoveStaleFile(const Text& path);
    Status MakeRoomForReplacement(const Text& canonical, IArkFolder& folder, IArkFile& file, OutputRecord& record);
    Status TakeForNewVersion(IArkFolder& folder, IArkFile& file, OutputRecord& record);
    void NotifyFileChange(std::int32_t code, const Text& path);

    bool IsPending(const OutputRecord& record);
    bool IsInside(const OutputRecord& record) const;
    Text ResolveUsedVariables(
        IArkVault& vault, const OutputRecord& record, const std::vector<Text>& names, const Text& folder);
    Status AddNewFiles(IArkVault& vault, const ObjectRef& task, const HostErrorLog& log);
    Status NoteForAdding(IArkVault& vault, IArkBatchAdd& batch, OutputRecord& record, const std::vector<Text>& names);
    using RecordsByPath = std::unordered_multimap<Text, OutputRecord*>; ///< by folded path
    Status TakeAddResult(IArkVault& vault, ArkAddResult& result, const RecordsByPath& byPath, const HostErrorLog& log);
    Status CheckInAdded(IArkVault& vault, const HostErrorLog& log);
    Status CheckIn(IArkVault& vault, const std::vector<ArkFileFolderPair>& pairs, ObjectRef utility);
    Status AddLogFile(const Text& path, ArkFileFolderPair& ids);
    Status ReferenceSources(IArkVault& vault, const ObjectRef& task);
    Status TransferCardValues(IArkVault& vault, const ObjectRef& task);

    const Platform& m_platform;
    OutputRecord* m_currentSource = nullptr;
    std::vector<OutputRecord> m_records;
    std::unordered_set<Text> m_notedPaths; ///< folded paths of the files noted in this run
    std::shared_ptr<IArkVault> m_vault;
    Text m_vaultRoot;
    TaskKind m_taskKind = TaskKind::Unknown;
    bool m_replaceExisting = false;
};

/// Makes a batch utility of the vault and asks it for its interface. The failure of either.
template <class Utility> Status createUtility(IArkVault& vault, ArkUtility kind, std::shared_ptr<Utility>& utility)
{
    ObjectRef object;
    const Status status = vault.CreateUtility(kind, object);
    if (failed(status))
        return status;
    utility = query<Utility>(object);
    return utility ? S_OK : E_NOINTERFACE;
}

} // namespace zn
