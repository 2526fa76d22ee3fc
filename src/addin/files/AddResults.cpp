#include "addin/files/FileLogic.h"
#include "addin/variables/TaskVariables.h"
#include "base/Format.h"
#include "base/Paths.h"
#include "platform/FileSystem.h"

#include <algorithm>

namespace zn {

namespace {

constexpr const char16_t* checkInComment = u"ZENTREL Task Add-in";
constexpr std::int32_t keepName = 0;
constexpr std::int32_t giveName = 64;

/// An empty piece ends the list.
std::vector<Text> usedVariables(const ObjectRef& task)
{
    std::vector<Text> names;
    for (Text& name : split(readText(task, u"UsedVariables").value_or(Text()), u',')) {
        if (name.empty())
            break;
        names.push_back(std::move(name));
    }
    return names;
}

void fillMissingIds(IArkVault& vault, ArkAddResult& result)
{
    std::shared_ptr<IArkFolder> folder;
    std::shared_ptr<IArkFile> file;
    const Status status = vault.GetFileFromPath(result.path, &folder, file);
    checkStatus(status);
    if (status != S_OK)
        return;
    if (file && result.fileId < 1)
        checkStatus(file->GetId(result.fileId));
    if (folder && result.folderId < 1)
        checkStatus(folder->GetId(result.folderId));
}

void checkIn(IArkVault& vault, const std::vector<ArkFileFolderPair>& pairs, const ObjectRef& utility)
{
    const auto unlock = query<IArkBatchUnlock>(utility);
    if (!unlock)
        throw StatusError(E_NOINTERFACE);
    std::int32_t count = 0;
    checkStatus(unlock->SetComment(checkInComment));
    checkStatus(unlock->AddSelection(vault, pairs));
    checkStatus(unlock->CreateTree(0, 1, 0, count));
    checkStatus(unlock->Unlock(0, 0));
}

/// A failed step of adding the results, with its line for the log.
class StepError : public StatusError {
public:
    StepError(Status status, Text logLine)
        : StatusError(status)
        , line(std::move(logLine))
    {
    }

    Text line;
};

void checkStep(Status status, const Text& logLine)
{
    if (failed(status))
        throw StepError(status, logLine);
}

/// Runs a step any failure of which has the same line.
template <class Step> auto inStep(const Text& logLine, const Step& step)
{
    try {
        return step();
    } catch (const StatusError& error) {
        throw StepError(error.status(), logLine);
    }
}

} // namespace

Status FileLogic::AddResultsToVault(IArkVault& vault, const ObjectRef& task, const HostErrorLog& log)
{
    try {
        RunAddSteps(vault, task, log);
        return S_OK;
    } catch (const StepError& error) {
        log(error.status(), error.line, {});
        return error.status();
    } catch (...) {
        const Status status = currentExceptionStatus();
        log(status, u"Adding files to the vault.", {});
        return status;
    }
}

void FileLogic::RunAddSteps(IArkVault& vault, const ObjectRef& task, const HostErrorLog& log)
{
    if (!m_records.empty())
        AddNewFiles(vault, task, log);
    const bool anyAdded = std::any_of(m_records.begin(), m_records.end(), [](const auto& r) { return r.added; });
    if (!anyAdded)
        return;
    if (m_taskKind == TaskKind::Conversion) {
        // Readers of logs know this sentence for a failed card step as well.
        inStep(u"Error creating references from source to destination file.", [&] {
            TransferCardValues(vault, task);
            ReferenceSources(vault, task);
        });
    }
    CheckInAdded(vault);
}

bool FileLogic::IsPending(const OutputRecord& record)
{
    // A file that couldn't be saved isn't there; the macro has logged it.
    return !record.printEntry && !record.added && m_platform.files.fileExists(record.path);
}

bool FileLogic::IsInside(const OutputRecord& record) const
{
    return record.insideVault && startsWithNoCase(record.path, m_vaultRoot);
}

void FileLogic::AddNewFiles(IArkVault& vault, const ObjectRef& task, const HostErrorLog& log)
{
    const auto batch = inStep(
        u"Creating ArkUtil_BatchAdd interface.", [&] { return createUtility<IArkBatchAdd>(vault, ArkUtil_BatchAdd); });
    const std::vector<Text> names = usedVariables(task);
    std::int32_t pending = 0;
    for (OutputRecord& record : m_records) {
        if (!IsPending(record))
            continue;
        pending += IsInside(record) ? 1 : 0;
        const Text path = record.path;
        checkStep(
            NoteForAdding(vault, *batch, record, names), formatText("Adding file '%s' from path.", pathFolder(path)));
    }
    if (pending == 0)
        return;

    std::vector<ArkAddResult> results;
    checkStep(batch->Commit(0, results, pending),
        u"Adding files to the vault. No permission to add files to the destination folder?");
    RecordsByPath byPath;
    for (OutputRecord& record : m_records) {
        if (!record.printEntry && record.insideVault)
            byPath.emplace(foldCase(record.path), &record);
    }
    for (ArkAddResult& result : results)
        TakeAddResult(vault, result, byPath, log);
}

Status FileLogic::NoteForAdding(
    IArkVault& vault, IArkBatchAdd& batch, OutputRecord& record, const std::vector<Text>& names)
{
    const bool inside = IsInside(record);
    const Text folder = pathFolder(record.path);
    if (names.empty())
        return inside ? batch.AddFile(record.path, folder, 0, nullptr, keepName) : S_OK;

    const Text destination = ResolveUsedVariables(vault, record, names, inside ? folder : record.path);
    if (!inside)
        return S_OK; // it stays where it is
    const Text name = pathFileName(record.path);
    // A failure here comes back in the batch's results, or the file isn't added.
    batch.AddFile(record.path, destination, 0, &name, giveName);
    record.path = destination + u"\\" + name;
    return S_OK;
}

Text FileLogic::ResolveUsedVariables(
    IArkVault& vault, const OutputRecord& record, const std::vector<Text>& names, const Text& folder)
{
    if (!record.source)
        throw StatusError(E_POINTER, "An output has no source file.");
    std::shared_ptr<IArkFile> file;
    std::shared_ptr<IArkVariableEnumerator> card;
    checkStatus(vault.GetFileFromPath(record.source->path, nullptr, file));
    if (!file)
        throw StatusError(E_POINTER, "The source of an output isn't in the vault.");
    checkStatus(file->GetVariableEnumerator(0, card));
    const Text configuration = record.configuration.empty() ? Text(u"@") : record.configuration;
    Text resolved = folder;
    for (const Text& name : names) {
        Value value;
        bool found = false;
        if (failed(card->GetVariable(name, configuration, record.source->projId, value, found)))
            continue;
        replaceAll(resolved, u"%" + name + u"%", found ? value.toText() : Text());
    }
    return resolved;
}

void FileLogic::TakeAddResult(
    IArkVault& vault, ArkAddResult& result, const RecordsByPath& byPath, const HostErrorLog& log)
{
    if (result.status == E_ARK_NAME_ALREADY_EXISTS)
        fillMissingIds(vault, result);
    else if (failed(result.status))
        return log(result.status, u"Error adding a file to the vault.", result.path);
    const auto [first, last] = byPath.equal_range(foldCase(result.path));
    for (auto entry = first; entry != last; ++entry) {
        entry->second->docId = result.fileId;
        entry->second->projId = result.folderId;
        entry->second->added = true;
    }
}

void FileLogic::CheckInAdded(IArkVault& vault)
{
    ObjectRef utility;
    checkStep(vault.CreateUtility(ArkUtil_BatchUnlock, utility), u"Checking in all checked out docs.");
    std::vector<ArkFileFolderPair> pairs;
    for (const OutputRecord& record : m_records) {
        if (record.added)
            pairs.push_back({record.docId, record.projId});
    }
    try {
        inStep(u"Unlocking files.", [&] { checkIn(vault, pairs, utility); });
    } catch (const StepError&) {
        TakeLeftOut(utility);
        throw;
    }
    for (OutputRecord& record : m_records)
        record.delivered = record.added;
}

ArkFileFolderPair FileLogic::AddLogFile(const Text& path)
{
    const auto batch = createUtility<IArkBatchAdd>(*m_vault, ArkUtil_BatchAdd);
    checkStatus(batch->AddFile(path, pathFolder(path), 0, nullptr, keepName));
    std::vector<ArkAddResult> results;
    std::int32_t count = 1;
    checkStatus(batch->Commit(0, results, count));
    if (results.empty())
        throw StatusError(E_FAIL, "Could not lock safe array.");
    checkStatus(results.front().status);
    return {results.front().fileId, results.front().folderId};
}

void FileLogic::CommitLogFile(const Text& path)
{
    if (!m_vault || !m_platform.files.fileExists(path))
        return;
    ArkFileFolderPair ids;
    std::shared_ptr<IArkFolder> folder;
    std::shared_ptr<IArkFile> file;
    if (m_vault->GetFileFromPath(path, &folder, file) == S_OK) {
        checkStatus(file->GetId(ids.fileId));
        checkStatus(folder->GetId(ids.folderId));
    } else {
        ids = AddLogFile(path);
    }

    OutputRecord record;
    record.path = path;
    record.docId = ids.fileId;
    record.projId = ids.folderId;
    record.hidden = true;
    record.insideVault = true;
    m_records.push_back(std::move(record));
    ObjectRef utility;
    checkStatus(m_vault->CreateUtility(ArkUtil_BatchUnlock, utility));
    checkIn(*m_vault, {ids}, utility);
}

void FileLogic::ReferenceSources(IArkVault& vault, const ObjectRef& task)
{
    if (!readBoolean(task, u"RefToSource").value_or(false))
        return;
    const auto batch = createUtility<IArkBatchReference>(vault, ArkUtil_BatchReference);
    const auto versioned = query<IArkVersionedReferences>(batch);
    for (const OutputRecord& record : m_records) {
        if (!record.added || record.hidden)
            continue;
        // The version that was worked on, which need not be the latest, if the host lets it be told.
        const ArkFileFolderPair source{record.source->docId, record.source->projId};
        checkStatus(versioned
                ? versioned->AddReferenceToVersion(record.docId, source, std::max(effectiveVersion(*record.source), 0))
                : batch->AddReferences(record.docId, {source}));
    }
    bool needsCommit = false;
    checkStatus(batch->CreateTree(0, needsCommit));
    if (needsCommit)
        checkStatus(batch->Commit(needsCommit));
}

} // namespace zn
