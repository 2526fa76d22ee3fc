#include "arkin/commands/frame/StartWorker.h"

#include "arkin/tasks/WorkerStore.h"
#include "platform/linux/DetachedProgram.h"
#include "platform/linux/RunProgram.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace zn::arkin {

namespace {

constexpr const char* unit = "arkin-worker.service";
constexpr std::chrono::seconds serviceLimit{10};
constexpr std::chrono::milliseconds lookInterval{50};
constexpr int looks = 200;

/// The program of that name in the user's path; empty if there is none.
std::string inPath(const std::string& name)
{
    const char* path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (std::error_code ignored;
            folder.starts_with('/') && std::filesystem::is_regular_file(folder + "/" + name, ignored))
            return folder + "/" + name;
    return {};
}

/// The unit that lies beside this program works on the conventional home, and knows no vault's name.
bool isUnitForThis(Session& session)
{
    std::error_code ignored;
    const auto file = programFolder() / "../../systemd/user" / unit;
    return session.platform().home().isConventional() && session.store().vaults().size() == 1
        && std::filesystem::exists(file, ignored);
}

/// False where there is no such service, or it runs already.
bool startService(Session& session)
{
    const auto program = isUnitForThis(session) ? inPath("systemctl") : std::string();
    const auto ask = [&](const std::string& verb) {
        return zn::runProgram({{program, "--user", verb, unit}, {}, {}, serviceLimit}, session.platform().clock());
    };
    return !program.empty() && !ask("is-active").empty() && ask("start").empty();
}

std::string lastLine(const std::filesystem::path& log)
{
    std::ifstream file(log);
    std::string last;
    for (std::string line; std::getline(file, line);)
        if (!line.empty())
            last = line;
    return last;
}

/// The newest worker's number; 0 if there is none.
std::int32_t newest(WorkerStore& workers)
{
    std::int32_t id = 0;
    for (const WorkerInfo& worker : workers.list())
        id = std::max(id, worker.id);
    return id;
}

} // namespace

void startWorker(Session& session)
{
    WorkerStore workers(session.store().database(), session.vault().info().id);
    const auto before = newest(workers);
    const auto folder = session.platform().home().cacheFolder();
    const auto log = folder / "worker.log";
    ProcessMark process;
    if (!startService(session)) {
        std::filesystem::create_directories(folder);
        std::filesystem::remove(log);
        process = markOf(zn::startDetached(
            {(programFolder() / "arkin").string(), "--vault", zn::toUtf8(session.vault().info().name), "worker"}, log));
    }
    for (int look = 0; look < looks && newest(workers) <= before; ++look) {
        if (process.process != 0 && (process.start == 0 || !mayBeAlive(process)) && newest(workers) <= before)
            throw zn::StatusError(zn::E_FAIL, "The worker ended at once: " + lastLine(log));
        session.platform().clock().sleep(lookInterval);
    }
    if (newest(workers) <= before)
        throw zn::StatusError(zn::E_FAIL,
            "The worker was started, but nothing has been heard of it for 10 seconds. See "
                + (process.process == 0 ? std::string("'journalctl --user -u arkin-worker'") : log.string()) + ".");
}

} // namespace zn::arkin
