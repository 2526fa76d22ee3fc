#include "arkin/tasks/TaskTrial.h"

#include "arkin/store/Vault.h"
#include "arkin/tasks/AddInModule.h"
#include "arkin/tasks/RunValues.h"
#include "arkin/tasks/TaskProperties.h"

#include <algorithm>

namespace zn::arkin {

TaskDefinition preparedForTrial(
    const TaskHost& host, const TaskDefinition& task, const zn::Text& path, const zn::Text& folder)
{
    const auto addIn = zn::query<zn::IArkTaskTrial>(loadAddIn(host.registry, host.files, task.addIn));
    if (!addIn)
        throw zn::StatusError(zn::E_NOINTERFACE,
            "The add-in '" + zn::toUtf8(task.addIn) + "' of the task '" + zn::toUtf8(task.name) + "' can't try tasks.");
    const auto properties = std::make_shared<TaskProperties>(task);
    zn::Text sentence;
    const auto status = addIn->PrepareTrial(host.vault, properties, path, folder, sentence);
    if (zn::failed(status))
        throw zn::StatusError(status, sentence.empty() ? describeStatus(host, status) + "." : zn::toUtf8(sentence));
    if (const auto refusal = properties->takeRefusal(); !refusal.empty())
        throw zn::StatusError(zn::E_FAIL, refusal);
    return properties->task();
}

std::vector<zn::ArkMacroWarning> macroWarnings(const TaskHost& host, const TaskDefinition& task)
{
    std::vector<zn::ArkMacroWarning> warnings;
    const auto addIn = zn::query<zn::IArkMacroCheck>(loadAddIn(host.registry, host.files, task.addIn));
    const auto properties = std::make_shared<TaskProperties>(task);
    const auto status = addIn ? addIn->CheckMacro(host.vault, properties, runValueNames(), warnings) : zn::S_OK;
    if (zn::failed(status))
        throw zn::StatusError(status,
            "The macro of the task '" + zn::toUtf8(task.name)
                + "' couldn't be looked at: " + describeStatus(host, status) + ".");
    return warnings;
}

std::vector<std::filesystem::path> filesMadeBy(Vault& copy, std::int32_t runId)
{
    const auto isOnlyRead = [&](const std::filesystem::path& file) {
        const auto place = copy.find(copy.local().fromMachine(file));
        return place && copy.version(place->fileId, 0).run != runId;
    };
    std::vector<std::filesystem::path> made;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(copy.local().toMachine(copy.info().root)))
        if (entry.is_regular_file() && !isOnlyRead(entry.path()))
            made.push_back(entry.path());
    std::ranges::sort(made);
    return made;
}

} // namespace zn::arkin
