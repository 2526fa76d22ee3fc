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
Status readVariableIds(IArkVault& vault, std::map<Text, std::int32_t>& ids)
{
    auto* manager = dynamic_cast<IArkVariableMgr*>(&vault);
    if (!manager)
        return E_NOINTERFACE;
    std::shared_ptr<IArkPosition> position;
    Status status = manager->GetFirstVariablePosition(position);
    bool isNull = false;
    while (!failed(status) && position->IsNull(isNull) == S_FALSE) {
        std::shared_ptr<IArkVariable> variable;
        Text name;
        std::int32_t id = 0;
        status = manager->GetNextVariable(*position, variable);
        if (!failed(status))
            status = variable->GetName(name);
        if (!failed(status))
            status = variable->GetId(id);
        if (!failed(status))
            ids[name] = id;
    }
    return status;
}

/// The task's mappings; empty if it has none.
Status readMappings(IArkVault& vault, const ObjectRef& task, std::vector<CardMapping>& mappings)
{
    Value table;
    Status status = getVariable(task, u"FileCardData", table);
    if (status != S_OK)
        return status;
    const Text text = table.toText();
    if (text.empty())
        return S_OK;
    std::map<Text, std::int32_t> ids;
    status = readVariableIds(vault, ids);
    if (!failed(status))
        mappings = parseCardMappings(text, ids);
    return status;
}

/// The value of one card variable of the source: 0 with the value, 1 if there is none.
Status readSourceVariable(const std::vector<ObjectRef>& values, std::int32_t variableId, const OutputRecord& output,
    const OutputRecord& source, Value& value)
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
        const Status status = candidate->GetValue(configuration, value);
        if ((source.isCadFile && status == S_FALSE) || (status == S_OK && value.isEmpty()))
            return candidate->GetValue(ownConfiguration, value);
        return status;
    }
    return S_FALSE;
}

Status mappedValue(const CardMapping& mapping, const OutputRecord& output, const OutputRecord& source,
    const std::vector<ObjectRef>& values, Clock& clock, Value& value)
{
    switch (mapping.kind) {
    case CardSourceKind::SourcePath:
        value = source.path;
        return S_OK;
    case CardSourceKind::SourceFolder:
        value = pathFolder(source.path);
        return S_OK;
    case CardSourceKind::Configuration:
        value = output.configuration;
        return S_OK;
    case CardSourceKind::Revision:
        value = source.revision;
        return S_OK;
    case CardSourceKind::Version:
        value = effectiveVersion(source);
        return S_OK;
    case CardSourceKind::WorkflowState:
        value = source.workflowState;
        return S_OK;
    case CardSourceKind::Now:
        value = DateValue{dayCountFromUnix(clock.now())};
        return S_OK;
    case CardSourceKind::FreeText:
        value = mapping.text;
        return S_OK;
    case CardSourceKind::Variable:
        return readSourceVariable(values, mapping.sourceVariableId, output, source, value);
    }
    return S_FALSE;
}

/// Reads what the vault knows of the source's version, into the source and `values`.
Status readSource(IArkVault& vault, OutputRecord& source, std::vector<ObjectRef>& values)
{
    std::shared_ptr<IArkFile> file;
    Status status = vault.GetFileFromPath(source.path, nullptr, file);
    if (!failed(status) && !file)
        status = E_POINTER;
    std::shared_ptr<IArkVariableEnumerator> card;
    if (!failed(status))
        status = file->GetVariableEnumerator(0, card);
    std::vector<Text> configurations;
    ArkVersionInfo info;
    if (!failed(status))
        status = file->GetVersionInfo(Value(source.version), source.projId, values, configurations, info);
    if (failed(status))
        return status;
    source.latestVersion = info.latestVersion;
    source.revision = info.revision;
    source.workflowState = info.workflowState;
    return S_OK;
}

} // namespace

Status FileLogic::TransferCardValues(IArkVault& vault, const ObjectRef& task)
{
    std::vector<CardMapping> mappings;
    if (const Status status = readMappings(vault, task, mappings); failed(status))
        return status;
    if (mappings.empty())
        return S_OK;

    std::shared_ptr<IArkBatchCardUpdate> batch;
    if (const Status status = createUtility(vault, ArkUtil_BatchCardUpdate, batch); failed(status))
        return status;
    for (const OutputRecord& output : m_records) {
        if (!output.added || output.hidden)
            continue;
        if (!output.source)
            return E_POINTER;
        std::vector<ObjectRef> values;
        if (const Status status = readSource(vault, *output.source, values); failed(status))
            return status;
        for (const CardMapping& mapping : mappings) {
            Value value;
            Status status = mappedValue(mapping, output, *output.source, values, m_platform.clock, value);
            if (status == S_OK)
                status = batch->SetVariable(output.docId, mapping.destVariableId, value, 0, 1);
            if (failed(status))
                return status;
        }
    }
    std::vector<Status> errors;
    return batch->Commit(errors, 0);
}

} // namespace zn
