#include "addin/files/FileLogic.h"
#include "addin/variables/TaskVariables.h"
#include "platform/FileSystem.h"

#include <pugixml.hpp>
#include <sstream>

namespace zn {

namespace {

constexpr const char16_t* outputVariable = u"__output_list";

void appendElement(pugi::xml_node& parent, const char* name, TextView text)
{
    parent.append_child(name).text().set(toUtf8(text).c_str());
}

/// A result is listed by its source, with where it went in "extra": the output's path for a conversion, the printer
/// for a printout.
void appendRecord(pugi::xml_node& list, const OutputRecord& record, TaskKind kind)
{
    const OutputRecord& shown = record.source ? *record.source : record;
    pugi::xml_node sel = list.append_child("sel");
    appendElement(sel, "doc_id", numberText(shown.docId));
    appendElement(sel, "proj_id", numberText(shown.projId));
    appendElement(sel, "path", shown.path);
    appendElement(sel, "ver", numberText(shown.version));
    if (!record.source)
        return;
    appendElement(sel, "conf", record.configuration);
    if (kind == TaskKind::Conversion)
        appendElement(sel, "extra", record.path);
    else if (kind == TaskKind::Printing && record.printEntry)
        appendElement(sel, "extra", record.extra);
}

Text listText(const std::vector<OutputRecord>& records, TaskKind kind)
{
    pugi::xml_document document;
    pugi::xml_node list = document.append_child("sels");
    for (const OutputRecord& record : records) {
        if (!record.hidden)
            appendRecord(list, record, kind);
    }
    std::ostringstream out;
    document.save(out, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return toText(out.str());
}

/// All text of an element, also where comments or other elements stand in between.
std::string wholeText(const pugi::xml_node& element)
{
    std::string text;
    for (const pugi::xml_node& child : element.children())
        text += child.type() == pugi::node_element ? wholeText(child) : child.value();
    return text;
}

OutputRecord readRecord(const pugi::xml_node& sel)
{
    OutputRecord record;
    for (const pugi::xml_node& child : sel.children()) {
        const std::string_view name = child.name();
        const Text text = toText(wholeText(child));
        if (name == "path")
            record.path = text;
        else if (name == "ver")
            record.version = leadingInteger(text);
        else if (name == "conf")
            record.selConfiguration = text; // although it was written from `configuration`
        else if (name == "extra")
            record.extra = text;
        else if (name == "doc_id")
            record.docId = leadingInteger(text);
        else if (name == "proj_id")
            record.projId = leadingInteger(text);
    }
    return record;
}

/// Takes every `sel` below a node, at any depth.
class RecordReader : public pugi::xml_tree_walker {
public:
    explicit RecordReader(std::vector<OutputRecord>& records)
        : m_records(records)
    {
    }
    bool for_each(pugi::xml_node& node) override
    {
        if (std::string_view(node.name()) == "sel")
            m_records.push_back(readRecord(node));
        return true;
    }

private:
    std::vector<OutputRecord>& m_records;
};

} // namespace

void FileLogic::WriteList(const ObjectRef& task, TaskKind kind, const SelectionRecords* selection)
{
    if (!task)
        throw StatusError(E_POINTER, "There is no task to write the file list to.");
    if (selection) {
        m_records.clear();
        m_notedPaths.clear();
        m_records.reserve(selection->size());
        for (const auto& record : *selection)
            m_records.push_back(*record);
    }
    writeVariable(task, selection ? selectionVariable : outputVariable, listText(m_records, kind));
}

std::optional<std::vector<OutputRecord>> FileLogic::ReadList(const ObjectRef& task, bool outputList)
{
    const std::optional<Value> value = readVariable(task, outputList ? outputVariable : selectionVariable);
    if (!value)
        return std::nullopt;
    const std::string text = toUtf8(value->toText());
    constexpr unsigned exactText = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_ws_pcdata;
    pugi::xml_document document;
    if (const auto parsed = document.load_buffer(text.data(), text.size(), exactText, pugi::encoding_utf8); !parsed)
        throw BrokenListError(E_FAIL, std::string("The stored file list cannot be read: ") + parsed.description());
    std::vector<OutputRecord> records;
    RecordReader reader(records);
    document.document_element().traverse(reader);
    return records;
}

bool FileLogic::HasHiddenFile()
{
    for (const OutputRecord& record : m_records) {
        if (record.hidden && m_platform.files.fileExists(record.path))
            return true;
    }
    return false;
}

std::int32_t FileLogic::CountResultFiles(bool includeHidden, bool includeOutside)
{
    std::int32_t count = 0;
    for (const OutputRecord& record : m_records) {
        if (!record.printEntry && (record.insideVault || includeOutside) && (!record.hidden || includeHidden)
            && m_platform.files.fileExists(record.path))
            ++count;
    }
    return count;
}

std::vector<ArkTaskResultDoc> FileLogic::CollectResultFiles(bool includeHidden)
{
    std::vector<ArkTaskResultDoc> documents;
    for (const OutputRecord& record : m_records) {
        if (record.printEntry || !record.insideVault || (record.hidden && !includeHidden)
            || !m_platform.files.fileExists(record.path))
            continue;
        std::shared_ptr<IArkFolder> folder;
        std::shared_ptr<IArkFile> file;
        const Status status = m_vault->GetFileFromPath(record.path, &folder, file);
        checkStatus(status);
        if (status == S_FALSE)
            continue;
        ArkTaskResultDoc document;
        checkStatus(file->GetId(document.fileId));
        checkStatus(folder->GetId(document.folderId));
        checkStatus(file->GetCurrentVersion(document.version));
        documents.push_back(document);
    }
    return documents;
}

} // namespace zn
