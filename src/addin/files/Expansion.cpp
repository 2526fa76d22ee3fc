#include "addin/files/FileLogic.h"
#include "addin/files/OutputNames.h"
#include "addin/variables/TaskVariables.h"
#include "base/Paths.h"

#include <unordered_map>

namespace zn {

namespace {

constexpr const char16_t* sourceRefsVariable = u"SourceRefs";
constexpr const char16_t* printRefsVariable = u"__printer_refversiontype";
constexpr std::int32_t asBuilt = 1;

bool itemRemains(IArkPosition& position)
{
    bool isNull = false;
    return position.IsNull(isNull) == S_FALSE;
}

/// Whoever can't say which kind the task is expands as for none.
TaskKind kindOrUnknown(const ObjectRef& task)
{
    try {
        return readKind(task, query<IArkTaskInstance>(task) != nullptr);
    } catch (const StatusError&) {
        return TaskKind::Unknown;
    }
}

std::unique_ptr<OutputRecord> recordOf(const ArkSelItem& item)
{
    auto record = std::make_unique<OutputRecord>();
    record->path = item.path;
    record->docId = item.fileId;
    record->projId = item.folderId;
    record->version = item.version;
    record->selConfiguration = item.configuration;
    record->isCadFile = isCadFile(item.path);
    return record;
}

} // namespace

void FileLogic::ExpandSelection(
    IArkVault& vault, const ObjectRef& task, const ArkSelection& items, SelectionRecords& selection, bool fetchFiles)
{
    if (m_taskKind == TaskKind::Unknown) {
        m_taskKind = kindOrUnknown(task);
    }
    for (const ArkSelItem& item : items) {
        if (item.itemType == ArkItemType::File) {
            if (!pathExtension(item.path).empty())
                selection.push_back(recordOf(item));
        } else if (item.itemType == ArkItemType::Folder) {
            std::shared_ptr<IArkFolder> folder;
            const Status status = vault.GetFolderFromPath(item.path, folder);
            checkStatus(status);
            if (status == S_OK)
                AddFolderFiles(*folder, selection);
        }
    }
    if (fetchFiles) {
        AnnounceOutputs(task, selection);
        FetchFiles(vault, task, selection);
    }
}

void FileLogic::AddFolderFiles(IArkFolder& folder, SelectionRecords& selection)
{
    std::int32_t folderId = 0;
    checkStatus(folder.GetId(folderId));
    std::shared_ptr<IArkPosition> position;
    checkStatus(folder.GetFirstFilePosition(position));
    while (itemRemains(*position)) {
        auto record = std::make_unique<OutputRecord>();
        std::shared_ptr<IArkFile> file;
        checkStatus(folder.GetNextFile(*position, file));
        checkStatus(file->GetLocalPath(folderId, record->path));
        checkStatus(file->GetId(record->docId));
        checkStatus(file->GetCurrentVersion(record->version));
        record->projId = folderId;
        record->isCadFile = isCadFile(record->path);
        if (m_taskKind != TaskKind::Conversion || isConvertibleFile(*record, m_taskKind))
            selection.push_back(std::move(record));
    }
    checkStatus(folder.GetFirstSubFolderPosition(position));
    while (itemRemains(*position)) {
        std::shared_ptr<IArkFolder> subFolder;
        checkStatus(folder.GetNextSubFolder(*position, subFolder));
        AddFolderFiles(*subFolder, selection);
    }
}

/// The fetch then waits for other runs that write the same files. Scripts write what they want.
void FileLogic::AnnounceOutputs(const ObjectRef& task, const SelectionRecords& selection)
{
    m_runPaths = query<IArkRunPaths>(task);
    if (m_runPaths && m_taskKind == TaskKind::Conversion)
        checkStatus(m_runPaths->AnnounceOutputs(ForeseeOutputs(task, selection)));
}

std::vector<ArkOutputNames> FileLogic::ForeseeOutputs(const ObjectRef& task, const SelectionRecords& selection) const
{
    if (m_taskKind != TaskKind::Conversion)
        return {};
    const OutputPlan plan{
        {readText(task, u"OutputPath").value_or(Text()), readText(task, u"OutputPath2").value_or(Text())},
        readText(task, u"FileFormat").value_or(Text()), withoutTrailingSeparators(m_vaultRoot)};
    return outputNames(plan, selection);
}

bool FileLogic::PullsReferencedVersions(const ObjectRef& task)
{
    if (const auto rule = readInteger(task, sourceRefsVariable))
        return (*rule & 1) != 0;
    return readInteger(task, printRefsVariable) == 0;
}

void FileLogic::FetchFiles(IArkVault& vault, const ObjectRef& task, SelectionRecords& selection)
{
    const auto fetch = createUtility<IArkBatchFetch>(vault, ArkUtil_BatchFetch);
    for (const auto& record : selection)
        checkStatus(fetch->AddSelection(vault, record->docId, record->projId, std::max(record->version, 0)));
    checkStatus(fetch->CreateTree(0, PullsReferencedVersions(task) ? asBuilt : 0));
    checkStatus(fetch->GetFiles(0, 0));
    MarkLeftOut(fetch, selection);

    std::vector<OutputRecord> copies;
    copies.reserve(selection.size());
    for (const auto& record : selection)
        copies.push_back(*record);
    FillLatestVersions(vault, copies);
    for (std::size_t i = 0; i < copies.size(); ++i)
        selection[i]->latestVersion = copies[i].latestVersion;
}

void FileLogic::FillLatestVersions(IArkVault& vault, std::vector<OutputRecord>& records)
{
    const auto batch = createUtility<IArkBatchQuery>(vault, ArkUtil_BatchQuery);
    for (const OutputRecord& record : records)
        checkStatus(batch->AddFile(Value(record.path)));
    std::vector<Text> columns;
    std::vector<ArkQueryRow> rows;
    checkStatus(batch->CreateList({}, columns));
    checkStatus(batch->GetRows(rows));

    std::unordered_map<std::int32_t, std::int32_t> latest;
    for (const ArkQueryRow& row : rows)
        latest.emplace(row.fileId, row.latestVersion); // the first row of a file counts
    for (OutputRecord& record : records) {
        if (const auto found = latest.find(record.docId); found != latest.end())
            record.latestVersion = found->second;
    }
}

} // namespace zn
