#include "arkin/tasks/RunLog.h"

#include "arkin/store/GetFiles.h"
#include "base/Paths.h"

namespace zn::arkin {

zn::Text runLogPath(RunStore& runs, const RunInfo& run, zn::TextView vaultRoot)
{
    const auto variables = runs.variables(run.id);
    const auto folder = variables.find(u"ErrorLogPath");
    if (folder == variables.end())
        return {};
    const auto root = zn::withoutTrailingSeparators(vaultRoot);
    return zn::pathAppend(zn::pathAppend(root, folder->second.toText()), run.guid) + u".log";
}

std::optional<std::string> readRunLog(Vault& vault, zn::FileSystem& files, const zn::Text& path)
{
    if (!files.fileExists(path)) {
        const auto place = vault.find(path);
        if (!place)
            return {};
        const GetRequest request[] = {{*place, 0}};
        getFiles(vault, request);
    }
    const auto bytes = files.readBytes(path);
    if (!bytes)
        throw zn::StatusError(zn::E_FAIL,
            "The log " + files.toMachine(path).string() + " can't be read: " + zn::toUtf8(bytes.reason) + ".");
    // Logs are written in the single-byte code page.
    return zn::toUtf8(zn::fromReadableCodePage(*bytes));
}

} // namespace zn::arkin
