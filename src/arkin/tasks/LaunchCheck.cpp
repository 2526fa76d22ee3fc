#include "arkin/tasks/LaunchCheck.h"

#include "arkin/store/Codes.h"
#include "arkin/store/Vault.h"
#include "base/Paths.h"

#include <cerrno>
#include <cstring>
#include <set>
#include <unistd.h>

namespace zn::arkin {

using zn::toUtf8;

namespace {

/// Why outputs can't go to a folder; nothing if they can.
using Obstacle = std::optional<std::string>;

constexpr const char* choose = " or choose another output path in the task.";

Obstacle fileInTheWay(const TaskHost& host, const zn::Text& folder)
{
    return host.files.shown(folder) + " is a file, and outputs are to go to a folder of that name. Rename the file,"
        + choose;
}

/// The nearest folder upwards that is there takes the others and the outputs.
Obstacle onTheDisk(const TaskHost& host, zn::Text folder)
{
    std::filesystem::path machine;
    try {
        machine = host.files.toMachine(folder);
    } catch (const zn::StatusError& error) {
        return std::string(error.what());
    }
    auto there = host.files.attributes(folder);
    while (!there && zn::pathFolder(folder) != folder && !zn::pathFolder(folder).empty()) {
        folder = zn::pathFolder(folder);
        there = host.files.attributes(folder);
    }
    if (!there)
        return {}; // a root that can't be asked for
    if (!there->folder)
        return fileInTheWay(host, folder);
    if (::access(host.files.toMachine(folder).c_str(), W_OK | X_OK) == 0)
        return {};
    return machine.string() + " can't be written: " + std::strerror(errno) + ". Give the right to write there,"
        + choose;
}

Obstacle inTheVault(const TaskHost& host, zn::Text folder)
{
    Vault& vault = *host.opened;
    auto there = vault.findFolder(folder);
    while (!there && zn::pathFolder(folder) != folder && !zn::pathFolder(folder).empty()) {
        const auto local = host.files.attributes(folder);
        if (vault.findAll(std::vector{folder}).front().fileId != 0 || (local && !local->folder))
            return fileInTheWay(host, folder);
        folder = zn::pathFolder(folder);
        there = vault.findFolder(folder);
    }
    if (there && !vault.permissions().allowed(*there, Right::Add))
        return "You may not put files into " + host.files.shown(folder) + ". Ask for the right to add files there,"
            + choose;
    return {};
}

/// The folders of the outputs, each once, without separators at their ends.
std::set<zn::Text> foldersOf(const std::vector<zn::ArkOutputNames>& outputs)
{
    std::set<zn::Text> folders;
    for (const zn::ArkOutputNames& names : outputs)
        folders.insert(zn::withoutTrailingSeparators(zn::pathFolder(names.beginning + u"x")));
    return folders;
}

bool isBelow(const zn::Text& path, const zn::Text& root)
{
    return zn::foldCase(path + u"\\").starts_with(zn::foldCase(root + u"\\"));
}

void lookAtFolders(
    const TaskHost& host, const std::vector<zn::ArkOutputNames>& outputs, std::vector<std::string>& obstacles)
{
    zn::Text root;
    zn::checkStatus(host.vault->GetRootFolderPath(root), "The vault doesn't tell its root folder.");
    root = zn::withoutTrailingSeparators(root);
    for (const zn::Text& folder : foldersOf(outputs)) {
        const bool inside = host.opened && isBelow(folder, root);
        if (const auto obstacle = inside ? inTheVault(host, folder) : onTheDisk(host, folder))
            obstacles.push_back(*obstacle);
    }
}

/// A file that the vault doesn't have at all is left to the run, which says so for this file.
void lookAtVersions(const TaskHost& host, const zn::ArkSelection& selection, std::vector<std::string>& obstacles)
{
    for (const zn::ArkSelItem& item : selection) {
        if (!host.opened || item.itemType != zn::ArkItemType::File || item.version <= 0)
            continue;
        try {
            host.opened->version(item.fileId, item.version);
        } catch (const zn::StatusError& error) {
            if (error.status() != E_ARK_NO_SUCH_VERSION)
                throw;
            obstacles.push_back(error.what());
        }
    }
}

} // namespace

std::vector<std::string> obstaclesOf(const TaskHost& host, const std::shared_ptr<zn::IArkAddIn5>& addIn,
    const std::shared_ptr<zn::IArkTaskInstance>& run, const zn::ArkSelection& selection)
{
    std::vector<std::string> obstacles;
    lookAtVersions(host, selection, obstacles);
    const auto launches = zn::query<zn::IArkTaskLaunch>(addIn);
    if (!launches)
        return obstacles;
    zn::ArkForesight foresight;
    const auto status = launches->ForeseeRun(host.vault, run, selection, foresight);
    if (zn::failed(status))
        throw zn::StatusError(
            status, "The add-in can't tell whether the run will go well: " + describeStatus(host, status) + ".");
    for (const zn::Text& sentence : foresight.obstacles)
        obstacles.push_back(toUtf8(sentence));
    lookAtFolders(host, foresight.outputs, obstacles);
    return obstacles;
}

void requireCanRun(const TaskHost& host, const std::shared_ptr<zn::IArkAddIn5>& addIn,
    const std::shared_ptr<zn::IArkTaskInstance>& run, const zn::ArkSelection& selection, const zn::Text& taskName)
{
    const auto obstacles = obstaclesOf(host, addIn, run, selection);
    if (!obstacles.empty())
        throw CannotRun(zn::E_INVALIDARG, "The task '" + toUtf8(taskName) + "' wasn't launched: " + obstacles.front());
}

} // namespace zn::arkin
