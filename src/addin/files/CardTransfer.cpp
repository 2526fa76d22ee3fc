#include "addin/files/CardMapping.h"
#include "addin/files/FileLogic.h"
#include "addin/variables/TaskVariables.h"
#include "base/Dates.h"
#include "base/Paths.h"
#include "platform/Clock.h"

namespace zn {

namespace {

constexpr const char16_t* ownConfiguration = u"@";

/// All card variables of the vault by name; a later one of the same name counts.
std::map<Text, std::int32_t> readVariableIds(IArkVault& vault)
{
    auto* manager = dynamic_cast<IArkVariableMgr*>(&vault);
    if (!manager)
        throw StatusError(E_NOINTERFACE);
    std::map<Text, std::int32_t> ids;
    std::shared_ptr<IArkPosition> position;
    checkStatus(manager->GetFirstVariablePosition(position));
    bool isNull = false;
    while (position->IsNull(isNull) == S_FALSE) {
        std::shared_ptr<IArkVariable> variable;
        Text name;
        std::int32_t id = 0;
        checkStatus(manager->GetNextVariable(*position, variable));
        checkStatus(variable->GetName(name));
        checkStatus(variable->GetId(id));
        ids[name] = id;
    }
    return ids;
}

/// The task's mappings; empty if it has none.
std::vector<CardMapping> readMappings(IArkVault& vault, const ObjectRef& task)
{
    const Text text = readText(task, u"FileCardData").value_or(Text());
    return text.empty() ? std::vector<CardMapping>() : parseCardMappings(text, readVariableIds(vault));
}

/// The card's value for a configuration; none if it has none.
std::optional<Value> valueFor(IArkVariableValue& card, const Text& configuration)
{
    Value value;
    const Status status = card.GetValue(configuration, value);
    checkStatus(status);
    return status == S_OK ? std::optional(std::move(value)) : std::nullopt;
}

/// The value of one card variable of the source; none if it has none.
std::optional<Value> readSourceVariable(const std::vector<ObjectRef>& values, std::int32_t variableId,
    const OutputRecord& output, const OutputRecord& source)
{
    // The card of a file that isn't a CAD file has no configurations.
    const Text configuration = source.isCadFile ? output.configuration : Text();
    for (const ObjectRef& object : values) {
        const auto candidate = query<IArkVariableValue>(object);
        if (!candidate)
            throw StatusError(E_NOINTERFACE, "A card value of the vault cannot be read.");
        std::int32_t id = 0;
        checkStatus(candidate->GetId(id));
        if (id != variableId)
            continue;
        const std::optional<Value> value = valueFor(*candidate, configuration);
        const bool askOwn = value ? value->isEmpty() : source.isCadFile;
        return askOwn ? valueFor(*candidate, ownConfiguration) : value;
    }
    return std::nullopt;
}

std::optional<Value> mappedValue(const CardMapping& mapping, const OutputRecord& output, const OutputRecord& source,
    const std::vector<ObjectRef>& values, Clock& clock)
{
    switch (mapping.kind) {
    case CardSourceKind::SourcePath:
        return source.path;
    case CardSourceKind::SourceFolder:
        return pathFolder(source.path);
    case CardSourceKind::Configuration:
        return output.configuration;
    case CardSourceKind::Revision:
        return source.revision;
    case CardSourceKind::Version:
        return effectiveVersion(source);
    case CardSourceKind::WorkflowState:
        return source.workflowState;
    case CardSourceKind::Now:
        return DateValue{dayCountFromUnix(clock.now())};
    case CardSourceKind::FreeText:
        return mapping.text;
    case CardSourceKind::Variable:
        return readSourceVariable(values, mapping.sourceVariableId, output, source);
    }
    return std::nullopt;
}

/// Reads what the vault knows of the source's version into the source, and returns the values of its card.
std::vector<ObjectRef> readSource(IArkVault& vault, OutputRecord& source)
{
    std::shared_ptr<IArkFile> file;
    checkStatus(vault.GetFileFromPath(source.path, nullptr, file));
    if (!file)
        throw StatusError(E_POINTER, "The file is not in the vault any more, so no output of this run got its card.");
    std::shared_ptr<IArkVariableEnumerator> card;
    checkStatus(file->GetVariableEnumerator(0, card));
    std::vector<ObjectRef> values;
    std::vector<Text> configurations;
    ArkVersionInfo info;
    checkStatus(file->GetVersionInfo(Value(source.version), source.projId, values, configurations, info));
    source.latestVersion = info.latestVersion;
    source.revision = info.revision;
    source.workflowState = info.workflowState;
    return values;
}

} // namespace

void FileLogic::TransferCardValues(IArkVault& vault, const ObjectRef& task)
{
    const std::vector<CardMapping> mappings = readMappings(vault, task);
    if (mappings.empty())
        return;
    const auto batch = createUtility<IArkBatchCardUpdate>(vault, ArkUtil_BatchCardUpdate);
    for (const OutputRecord& output : m_records) {
        if (!output.added || output.hidden)
            continue;
        if (!output.source)
            throw StatusError(E_POINTER);
        std::vector<ObjectRef> values;
        try {
            values = readSource(vault, *output.source);
        } catch (const StatusError& error) {
            if (error.what()[0])
                m_failures.push_back({output.source->path, toText(error.what())});
            throw;
        }
        for (const CardMapping& mapping : mappings) {
            const auto value = mappedValue(mapping, output, *output.source, values, m_platform.clock);
            if (value)
                checkStatus(batch->SetVariable(output.docId, mapping.destVariableId, *value, 0, 1));
        }
    }
    std::vector<Status> errors;
    checkStatus(batch->Commit(errors, 0));
}

} // namespace zn
