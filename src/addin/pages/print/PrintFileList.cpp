#include "addin/pages/print/PrintFileList.h"

#include "addin/files/OutputRecord.h"
#include "base/Paths.h"

namespace zn {

namespace {

/// The columns in the order of `listColumns`.
enum Column : std::size_t {
    NameColumn,
    PathColumn,
    ConfigurationColumn,
    ParentIdColumn,
    ParentConfigurationColumn,
    FlagsColumn,
    VersionColumn,
    ColumnCount,
};

} // namespace

const TextView listColumns = u"#ArkCol_Name\n#ArkCol_Path\n#ArkCol_Configuration\n#ArkCol_ParentFileID\n"
                             u"#ArkCol_ParentFileConfiguration\n#ArkCol_ArkListRetFileFlag\n#ArkCol_AttachedVersion";

PrintFileList::PrintFileList(
    const ArkSelection& selection, const std::vector<ArkListRow>& rows, const FirstTicks& ticks)
{
    for (const ArkSelItem& item : selection) {
        if (item.itemType == ArkItemType::File)
            m_namedDocuments.insert(item.fileId);
        else if (item.itemType == ArkItemType::Folder)
            m_namedFolders.insert(item.folderId);
    }
    m_files.reserve(rows.size());
    m_byKey.reserve(rows.size());
    std::vector<Link> links;
    for (const ArkListRow& row : rows) {
        if (row.columns.size() < ColumnCount)
            throw StatusError(E_UNEXPECTED, "The vault's list of files lacks columns.");
        FileInfo& file = fileOf(row, ticks);
        const std::int32_t parent = leadingInteger(row.columns[ParentIdColumn]);
        if (parent == 0)
            m_roots.push_back(&file);
        else
            links.push_back({{parent, row.columns[ParentConfigurationColumn]}, &file});
    }
    link(links);
}

/// The file of a row; a document and configuration that is known already only gets one more place.
FileInfo& PrintFileList::fileOf(const ArkListRow& row, const FirstTicks& ticks)
{
    const auto [known, isNew] = m_byKey.try_emplace({row.fileId, row.columns[ConfigurationColumn]}, nullptr);
    if (!isNew)
        return *known->second;
    FileInfo& file = *m_files.emplace_back(std::make_shared<FileInfo>());
    known->second = &file;
    file.documentId = row.fileId;
    file.folderId = row.folderId;
    file.name = row.columns[NameColumn];
    file.path = withoutTrailingSeparators(row.columns[PathColumn]);
    file.configuration = row.columns[ConfigurationColumn];
    file.version = leadingInteger(row.columns[VersionColumn]);
    file.returnFlags = leadingInteger(row.columns[FlagsColumn]);
    if (!hasConvertibleExtension(file.name)) {
        file.state = FileInfo::notPrintable;
        file.stateText = ticks.unsupportedText;
    }
    select(file, isTickedAtFirst(file, ticks));
    return file;
}

bool PrintFileList::isTickedAtFirst(const FileInfo& file, const FirstTicks& ticks) const
{
    if (m_namedDocuments.contains(file.documentId) || m_namedFolders.contains(file.folderId))
        return true;
    if (file.isDrawing())
        return ticks.rule == AutoSelect::Drawings || ticks.rule == AutoSelect::Everything;
    return ticks.rule == AutoSelect::PartsAndAssemblies || ticks.rule == AutoSelect::Everything;
}

void PrintFileList::link(const std::vector<Link>& links)
{
    for (const Link& link : links) {
        FileInfo* parent = find(link.parent);
        if (!parent)
            m_roots.push_back(link.child); // nothing that can be printed is to be missing in the tree
        else
            (link.child->isDrawing() ? parent->drawings : parent->parts).push_back(link.child);
    }
}

FileInfo* PrintFileList::find(const Key& key) const
{
    const auto known = m_byKey.find(key);
    return known == m_byKey.end() ? nullptr : known->second;
}

bool PrintFileList::select(FileInfo& file, bool selected)
{
    if (file.state != FileInfo::printable)
        return false;
    if (file.selected != selected)
        m_selectedCount += selected ? 1 : -1;
    file.selected = selected;
    return true;
}

void PrintFileList::takeTicks(const PrintFileList& earlier)
{
    for (const RefPtr& file : m_files) {
        if (const FileInfo* before = earlier.find({file->documentId, file->configuration}))
            select(*file, before->selected);
    }
}

ArkSelection PrintFileList::selectionArray() const
{
    ArkSelection selection;
    for (const RefPtr& file : m_files) {
        if (file->selected)
            selection.push_back({file->documentId, file->folderId, pathAppend(file->path, file->name),
                file->configuration, ArkItemType::File, file->version});
    }
    return selection;
}

} // namespace zn
