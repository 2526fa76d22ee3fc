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

Status fillMissingIds(IArkVault& vault, ArkAddResult& result)
{
    std::shared_ptr<IArkFolder> folder;
    std::shared_ptr<IArkFile> file;
    Status status = vault.GetFileFromPath(result.path, &folder, file);
    if (status != S_OK)
        return status;
    if (file && result.fileId < 1)
        status = file->GetId(result.fileId);
    if (!failed(status) && folder && result.folderId < 1)
        status = folder->GetId(result.folderId);
    return status;
}

} // namespace

Status FileLogic::AddResultsToVault(IArkVault& vault, const ObjectRef& task, const HostErrorLog& log)
{
    const Status noted = m_records.empty() ? S_OK : AddNewFiles(vault, task, log);
    if (failed(noted))
        return noted;
    const bool anyAdded = std::any_of(m_records.begin(), m_records.end(), [](const auto& r) { return r.added; });
    if (!anyAdded)
        return noted;
    if (m_taskKind == TaskKind::Conversion) {
        Status status = TransferCardValues(vault, task);
        if (!failed(status))
            status = ReferenceSources(vault, task);
        if (failed(status)) {
            // Readers of logs know this sentence for a failed card step as well.
            log(status, u"Error creating references from source to destination file.");
            return status;
        }
    }
    return CheckInAdded(vault, log);
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

Status FileLogic::AddNewFiles(IArkVault& vault, const ObjectRef& task, const HostErrorLog& log)
{
    std::shared_ptr<IArkBatchAdd> batch;
    Status status = createUtility(vault, ArkUtil_BatchAdd, batch);
    if (failed(status)) {
        log(status, u"Creating ArkUtil_BatchAdd interface.");
        return status;
    }
    const std::vector<Text> names = usedVariables(task);
    std::int32_t pending = 0;
    for (OutputRecord& record : m_records) {
        if (!IsPending(record))
            continue;
        pending += IsInside(record) ? 1 : 0;
        const Text path = record.path;
        status = NoteForAdding(vault, *batch, record, names);
        if (failed(status)) {
            log(status, formatText("Adding file '%s' from path.", pathFolder(path)));
            return status;
        }
    }
    if (pending == 0)
        return status;

    std::vector<ArkAddResult> results;
    status = batch->Commit(0, results, pending);
    if (failed(status)) {
        log(status, u"Adding files to the vault. No permission to add files to the destination folder?");
        return status;
    }
    RecordsByPath byPath;
    for (OutputRecord& record : m_records) {
        if (!record.printEntry && record.insideVault)
            byPath.emplace(foldCase(record.path), &record);
    }
    for (ArkAddResult& result : results) {
        if (const Status taken = TakeAddResult(vault, result, byPath, log); failed(taken))
            return taken;
    }
    return status;
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

Status FileLogic::TakeAddResult(
    IArkVault& vault, ArkAddResult& result, const RecordsByPath& byPath, const HostErrorLog& log)
{
    if (failed(result.status) && result.status != E_ARK_NAME_ALREADY_EXISTS) {
        log(result.status, u"Error adding a file to the vault.");
        return S_OK;
    }
    if (result.status == E_ARK_NAME_ALREADY_EXISTS) {
        if (const Status status = fillMissingIds(vault, result); failed(status))
            return status;
    }
    const auto [first, last] = byPath.equal_range(foldCase(result.path));
    for (auto entry = first; entry != last; ++entry) {
        entry->second->docId = result.fileId;
        entry->second->projId = result.folderId;
        entry->second->added = true;
    }
    return S_OK;
}

Status FileLogic::CheckInAdded(IArkVault& vault, const HostErrorLog& log)
{
    ObjectRef utility;
    Status status = vault.CreateUtility(ArkUtil_BatchUnlock, utility);
    if (failed(status)) {
        log(status, u"Checking in all checked out docs.");
        return status;
    }
    std::vector<ArkFileFolderPair> pairs;
    for (const OutputRecord& record : m_records) {
        if (record.added)
            pairs.push_back({record.docId, record.projId});
    }
    status = CheckIn(vault, pairs, utility);
    if (failed(status))
        log(status, u"Unlocking files.");
    return status;
}

Status FileLogic::CheckIn(IArkVault& vault, const std::vector<ArkFileFolderPair>& pairs, ObjectRef utility)
{
    const auto unlock = query<IArkBatchUnlock>(utility);
    if (!unlock)
        return E_NOINTERFACE;
    std::int32_t count = 0;
    Status status = unlock->SetComment(checkInComment);
    if (!failed(status))
        status = unlock->AddSelection(vault, pairs);
    if (!failed(status))
        status = unlock->CreateTree(0, 1, 0, count);
    if (!failed(status))
        status = unlock->Unlock(0, 0);
    return status;
}

Status FileLogic::AddLogFile(const Text& path, ArkFileFolderPair& ids)
{
    std::shared_ptr<IArkBatchAdd> batch;
    Status status = createUtility(*m_vault, ArkUtil_BatchAdd, batch);
    if (!failed(status))
        status = batch->AddFile(path, pathFolder(path), 0, nullptr, keepName);
    std::vector<ArkAddResult> results;
    std::int32_t count = 1;
    if (!failed(status))
        status = batch->Commit(0, results, count);
    if (failed(status))
        return status;
    if (results.empty())
        throw StatusError(E_FAIL, "Could not lock safe array.");
    ids = {results.front().fileId, results.front().folderId};
    return results.front().status;
}

Status FileLogic::CommitLogFile(const Text& path)
{
    if (!m_vault || !m_platform.files.fileExists(path))
        return S_FALSE;
    ArkFileFolderPair ids;
    std::shared_ptr<IArkFolder> folder;
    std::shared_ptr<IArkFile> file;
    Status status = m_vault->GetFileFromPath(path, &folder, file);
    if (status != S_OK) {
        status = AddLogFile(path, ids);
    } else {
        status = file->GetId(ids.fileId);
        if (!failed(status))
            status = folder->GetId(ids.folderId);
    }
    if (failed(status))
        return status;

    ObjectRef utility;
    status = m_vault->CreateUtility(ArkUtil_BatchUnlock, utility);
    if (!failed(status))
        status = CheckIn(*m_vault, {ids}, utility);
    OutputRecord record;
    record.path = path;
    record.docId = ids.fileId;
    record.projId = ids.folderId;
    record.hidden = true;
    record.insideVault = true;
    m_records.push_back(std::move(record));
    return status;
}

Status FileLogic::ReferenceSources(IArkVault& vault, const ObjectRef& task)
{
    Value wanted;
    Status status = getVariable(task, u"RefToSource", wanted);
    if (failed(status))
        return status;
    if (status == S_FALSE || !wanted.toBool())
        return S_OK;
    std::shared_ptr<IArkBatchReference> batch;
    status = createUtility(vault, ArkUtil_BatchReference, batch);
    for (const OutputRecord& record : m_records) {
        if (failed(status))
            return status;
        if (record.added && !record.hidden)
            status = batch->AddReferences(record.docId, {{record.source->docId, record.source->projId}});
    }
    bool needsCommit = false;
    if (!failed(status))
        status = batch->CreateTree(0, needsCommit);
    if (!failed(status) && needsCommit)
        status = batch->Commit(needsCommit);
    return status;
}

} // namespace zn
