#include "arkin/tasks/TaskHost.h"

#include "arkin/tasks/ProcessMark.h"
#include "arkin/tasks/RunValues.h"
#include "base/Format.h"
#include "contracts/host/Records.h"

namespace zn::arkin {

RunSetting settingOf(const TaskHost& host)
{
    RunSetting setting;
    zn::checkStatus(host.vault->GetName(setting.vaultName), "The vault doesn't tell its name.");
    zn::checkStatus(host.vault->GetRootFolderPath(setting.vaultRoot), "The vault doesn't tell its root folder.");
    setting.hostName = thisProcess().host;
    setting.userName = host.userName;
    return setting;
}

std::string describeStatus(const TaskHost& host, zn::Status status)
{
    const auto number = zn::toUtf8(zn::formatText("0x%08X", static_cast<std::uint32_t>(status)));
    zn::Text name, description;
    if (host.vault->GetErrorText(status, name, description) == zn::S_OK && !description.empty())
        return zn::toUtf8(description) + " (" + number + ")";
    return "status " + number;
}

std::string describeFailure(const TaskHost& host, zn::Status status, const zn::ArkCmd& cmd)
{
    return cmd.text.empty() ? describeStatus(host, status) + "." : zn::toUtf8(cmd.text);
}

} // namespace zn::arkin
