#include "arkin/tasks/RunAgain.h"

#include "arkin/store/Vault.h"
#include "arkin/tasks/AddInModule.h"
#include "arkin/tasks/LaunchCheck.h"
#include "arkin/tasks/LaunchInstance.h"
#include "arkin/tasks/RunAudit.h"

#include <algorithm>
#include <set>

namespace zn::arkin {

using zn::StatusError;
using zn::toUtf8;

namespace {

std::string runText(const RunInfo& run) { return "run " + std::to_string(run.id); }

/// The item where its file is now, whatever it was called then; none if the vault doesn't have it any more.
std::optional<zn::ArkSelItem> itemNow(const TaskHost& host, zn::ArkSelItem item)
{
    if (!host.opened)
        return item;
    Vault& vault = *host.opened;
    const auto row = vault.files().row(item.fileId);
    const auto folders = vault.files().foldersOf(item.fileId);
    if (!row || row->deleted || folders.empty())
        return {};
    if (std::find(folders.begin(), folders.end(), item.folderId) == folders.end())
        item.folderId = folders.front();
    item.path = vault.pathOf({item.fileId, item.folderId});
    return item;
}

/// The same task as it was at the run's launch.
TaskDefinition taskOfRun(const RunInfo& run, const Variables& settings, const RunAudit& audit)
{
    TaskDefinition task;
    task.name = run.taskName;
    task.addIn = run.addIn;
    task.host.fileLimit = run.fileLimit;
    task.host.keepsIdentical = run.keepsIdentical;
    task.variables = settings;
    for (const zn::Text& asked : audit.asked)
        task.variables.erase(asked);
    return task;
}

/// What the launch was answered then.
Variables answersOf(const Variables& settings, const RunAudit& audit)
{
    Variables answers;
    for (const zn::Text& asked : audit.asked)
        if (const auto found = settings.find(asked); found != settings.end())
            answers.insert(*found);
    return answers;
}

/// Lets the add-in write what its launches settle of the files, and takes over what stands on the run then.
void settleFiles(const TaskHost& host, const TaskDefinition& task, NewRun& run, bool anyway)
{
    auto setting = settingOf(host);
    setting.guid = run.guid;
    setting.taskName = task.name;
    const auto instance = std::make_shared<LaunchInstance>(task, setting);
    for (const auto& [name, value] : run.ownVariables)
        zn::checkStatus(instance->SetValue(name, value));
    const auto addIn = loadAddIn(host.registry, host.files, task.addIn);
    if (const auto launches = zn::query<zn::IArkTaskLaunch>(addIn)) {
        zn::Text sentence;
        const auto status = launches->SettleSelection(host.vault, instance, run.selection, sentence);
        if (zn::failed(status))
            throw StatusError(status,
                "The task '" + toUtf8(task.name) + "' couldn't be launched: "
                    + (sentence.empty() ? describeStatus(host, status) + "." : toUtf8(sentence)));
    }
    if (!anyway)
        requireCanRun(host, addIn, instance, run.selection, task.name);
    run.ownVariables = instance->ownVariables();
}

} // namespace

zn::ArkSelection selectionAgain(const TaskHost& host, const RunInfo& run, bool onlyFailed)
{
    RunStore runs(host.database, host.vaultId);
    auto selected = runs.selection(run.id);
    if (!onlyFailed)
        return selected;
    if (!run.ended())
        throw StatusError(zn::E_INVALIDARG,
            "What fails of " + runText(run) + " is known when it has ended. Wait for it, or cancel it.");
    const auto results = runs.results(run.id);
    if (results.empty())
        throw StatusError(
            zn::E_INVALIDARG, "Of " + runText(run) + " nothing is known of single files. Do it again as a whole.");
    zn::ArkSelection again;
    std::set<std::int32_t> seen;
    bool lacking = false;
    for (const RunFileResult& result : results) {
        if (result.outcome != zn::FileOutcome::Failed && result.outcome != zn::FileOutcome::Skipped)
            continue;
        lacking = true;
        if (!seen.insert(result.sourceId).second)
            continue;
        zn::ArkSelection items;
        std::copy_if(selected.begin(), selected.end(), std::back_inserter(items), [&](const zn::ArkSelItem& item) {
            return item.itemType == zn::ArkItemType::File && item.fileId == result.sourceId;
        });
        if (items.empty()) // it came with a folder
            items.push_back({result.sourceId, 0, result.source, {}, zn::ArkItemType::File, -1});
        for (zn::ArkSelItem& item : items)
            if (auto now = itemNow(host, std::move(item)))
                again.push_back(std::move(*now));
    }
    if (!lacking)
        throw StatusError(zn::E_INVALIDARG, "Nothing of " + runText(run) + " failed, so there is nothing to do again.");
    if (again.empty())
        throw StatusError(
            zn::E_INVALIDARG, "The vault doesn't have the files any more that failed in " + runText(run) + ".");
    return again;
}

RunInfo launchAgain(const TaskHost& host, std::int32_t runId, const AgainWish& wish)
{
    RunStore runs(host.database, host.vaultId);
    const auto run = runs.get(runId);
    RunAudits audits(host.database);
    const auto audit = audits.get(runId);
    if (audit.isFromBefore() && !wish.currentSettings)
        throw StatusError(zn::E_INVALIDARG,
            "The settings of " + runText(run)
                + " weren't kept yet when it was launched. Do it again with those that "
                  "its task has now (--current).");
    const auto settings = audits.settings(audit);
    const auto task = wish.currentSettings ? TaskStore(host.database, host.vaultId).get(run.taskName)
                                           : taskOfRun(run, settings, audit);
    NewRun again{newGuid(), host.userName, selectionAgain(host, run, wish.onlyFailed), answersOf(settings, audit)};
    again.againOf = runId;
    settleFiles(host, task, again, wish.anyway);
    return runs.get(runs.enqueue(task, again, host.clock.now()));
}

} // namespace zn::arkin
