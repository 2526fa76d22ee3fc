#pragma once

#include "addin/files/OutputRecord.h"
#include "addin/files/SavedFileNotes.h"
#include "base/Object.h"
#include "contracts/host/ArkBatch.h"
#include "contracts/host/ArkTask.h"
#include "contracts/host/ArkVault.h"
#include "platform/Platform.h"

#include <functional>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace zn {

/// Writes a host failure, with what was being done, to the task's log. The path is that of the output which failed, or
/// empty where it concerns all.
using HostErrorLog = std::function<void(Status, const Text& text, const Text& path)>;

/// What went wrong with one file, in a sentence for a person.
struct FileFailure {
    Text path;
    Text sentence;
};

/// How many outputs a run should have given, and how many of them aren't where they belong.
struct OutputTally {
    std::int32_t expected = 0;
    std::int32_t missing = 0;
};

/// A save that was not to be.
struct RefusedSave {
    Text path;
    const OutputRecord* source = nullptr; ///< lives as long as the run
};

/// A stored file list that is none.
class BrokenListError : public StatusError {
public:
    using StatusError::StatusError;
};

/// The file list of a run and all that happens between it and the vault. Used on the thread on which the host calls
/// the add-in, inside the CAD application's event callbacks too. A `task` is an object with `IArkTaskProperties` or
/// `IArkTaskInstance`. Failures are raised, the host's with its status, unless a comment says otherwise.
class FileLogic : public SavedFileNotes {
public:
    explicit FileLogic(const Platform& platform);

    /// Empties the list, takes the vault and asks it for its root path. On a failure the other fields are set all the
    /// same.
    void Initialize(std::shared_ptr<IArkVault> vault, TaskKind taskKind, bool replaceExisting);

    /// The input record to which saved and printed files are credited from now on; not owned.
    void SetCurrentSource(OutputRecord* record);

    // --- the lists in the task's variables (FileLists.cpp)

    /// Without a selection the records go to `__output_list`. With one, the records are replaced by copies of the
    /// selection's and go to `__selection_list`.
    void WriteList(const ObjectRef& task, TaskKind kind, const SelectionRecords* selection);
    /// The stored records; none when the list was never written. Raises `BrokenListError` for text that is no such
    /// list.
    std::optional<std::vector<OutputRecord>> ReadList(const ObjectRef& task, bool outputList);

    /// Whether a hidden record has a file on disk, by which the report knows of a log.
    bool HasHiddenFile();
    /// Records of files (not printouts) inside the vault (or anywhere) that exist on disk.
    std::int32_t CountResultFiles(bool includeHidden, bool includeOutside);
    /// The vault's documents of the records that exist on disk inside the vault.
    std::vector<ArkTaskResultDoc> CollectResultFiles(bool includeHidden);

    // --- the host's selection (Expansion.cpp)

    /// Turns the host's selection into input records, folders into their files. With `fetchFiles` the files and what
    /// they refer to are brought to the disk and the latest versions are learned.
    void ExpandSelection(IArkVault& vault, const ObjectRef& task, const ArkSelection& items,
        SelectionRecords& selection, bool fetchFiles);
    /// The names that the outputs of these inputs will have, as far as the task tells; none for another task than a
    /// conversion.
    std::vector<ArkOutputNames> ForeseeOutputs(const ObjectRef& task, const SelectionRecords& selection) const;
    /// Fills `latestVersion` of each record that the vault has, by one query.
    void FillLatestVersions(IArkVault& vault, std::vector<OutputRecord>& records);

    // --- results (Results.cpp, AddResults.cpp)

    void NoteSavedFile(TextView path, TextView configuration, bool hidden) override;
    void NotePrintedItem(TextView printer, TextView configuration) override;
    /// Checks a log out that a former run of the same instance left in the vault.
    void PrepareLogFile(const Text& path);
    /// Adds what was saved to the vault in one batch, fills cards and references, checks everything in.
    /// Nothing is raised: 0, or the failure that ended it and stands in the log.
    Status AddResultsToVault(IArkVault& vault, const ObjectRef& task, const HostErrorLog& log);
    /// Adds or checks in the run's log and notes it as a hidden record, also when the check-in fails. Nothing happens
    /// if there is no such file.
    void CommitLogFile(const Text& path);

    // --- what didn't become of it (Shortfall.cpp)

    /// Looks, after the last file and before `AddResultsToVault`, for saves that were announced and never came, where
    /// the macro has said nothing; they are in the next `TakeFailures`.
    void NoteUnkeptSaves();
    /// What went wrong with single files since the last call.
    std::vector<FileFailure> TakeFailures();
    /// Whether anything was saved, printed or refused for an input.
    bool HasResults(const OutputRecord& item) const;
    /// For the inputs of this run, before `WriteList` replaces the records. An input that gave nothing counts as one
    /// missing output, but not that of a script that has ended normally, which may have nothing to save.
    OutputTally CountOutputs(const SelectionRecords& items);
    /// What became of each of them, source by source, without the sentences. The same inputs at the same time.
    std::vector<ArkFileResult> ListResults(const SelectionRecords& items) const;

    // --- permissions (Permissions.cpp)

    /// Whether the user may read the file; "<VaultPath>" in the path is the vault's root. A path that isn't the
    /// vault's counts as readable.
    bool CanReadVaultFile(const Text& path);

    const std::vector<OutputRecord>& records() const { return m_records; }

private:
    void AddFolderFiles(IArkFolder& folder, SelectionRecords& selection);
    bool PullsReferencedVersions(const ObjectRef& task);
    void AnnounceOutputs(const ObjectRef& task, const SelectionRecords& selection);
    void FetchFiles(IArkVault& vault, const ObjectRef& task, SelectionRecords& selection);
    void MarkLeftOut(const ObjectRef& utility, SelectionRecords& selection);

    void TakeLateLabel(TextView path, TextView configuration);
    void RemoveStaleFile(const Text& path);
    Status MakeRoomForReplacement(const Text& canonical, IArkFolder& folder, IArkFile& file, OutputRecord& record);
    Status TakeForNewVersion(IArkFolder& folder, IArkFile& file, OutputRecord& record);
    void NotifyFileChange(std::int32_t code, const Text& path);

    bool IsPending(const OutputRecord& record);
    bool IsInside(const OutputRecord& record) const;
    void RunAddSteps(IArkVault& vault, const ObjectRef& task, const HostErrorLog& log);
    Text ResolveUsedVariables(
        IArkVault& vault, const OutputRecord& record, const std::vector<Text>& names, const Text& folder);
    void AddNewFiles(IArkVault& vault, const ObjectRef& task, const HostErrorLog& log);
    Status NoteForAdding(IArkVault& vault, IArkBatchAdd& batch, OutputRecord& record, const std::vector<Text>& names);
    using RecordsByPath = std::unordered_multimap<Text, OutputRecord*>; ///< by folded path
    void TakeAddResult(IArkVault& vault, ArkAddResult& result, const RecordsByPath& byPath, const HostErrorLog& log);
    void CheckInAdded(IArkVault& vault);
    void TakeLeftOut(const ObjectRef& utility);
    bool WasLeftAsItWas(const OutputRecord& record) const;
    bool LacksOutput(const OutputRecord& item) const;
    bool IsThere(const OutputRecord& record) const;
    void NoteRefusal(const Text& path, const char16_t* what, Status status);
    ArkFileFolderPair AddLogFile(const Text& path);
    void ReferenceSources(IArkVault& vault, const ObjectRef& task);
    void TransferCardValues(IArkVault& vault, const ObjectRef& task);

    const Platform& m_platform;
    OutputRecord* m_currentSource = nullptr;
    std::vector<OutputRecord> m_records;
    std::unordered_set<Text> m_notedPaths; ///< folded paths of the files noted in this run
    std::vector<FileFailure> m_failures;
    /// Saves for which the vault made no room, by their folded paths.
    std::map<Text, RefusedSave> m_refused;
    std::shared_ptr<IArkVault> m_vault;
    std::shared_ptr<IArkRunPaths> m_runPaths; ///< null where the host has none, or outside of a run
    Text m_vaultRoot;
    TaskKind m_taskKind = TaskKind::Unknown;
    bool m_replaceExisting = false;
};

/// Makes a batch utility of the vault and asks it for its interface. Raises the failure of either.
template <class Utility> std::shared_ptr<Utility> createUtility(IArkVault& vault, ArkUtility kind)
{
    ObjectRef object;
    checkStatus(vault.CreateUtility(kind, object));
    auto utility = query<Utility>(object);
    if (!utility)
        throw StatusError(E_NOINTERFACE);
    return utility;
}

} // namespace zn
