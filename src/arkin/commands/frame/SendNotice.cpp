#include "arkin/commands/frame/SendNotice.h"

#include "platform/linux/RunProgram.h"
#include "platform/Registry.h"

#include <filesystem>

namespace zn::arkin {

namespace {

constexpr std::chrono::seconds noticeLimit{60};

/// Where systems keep their mailer; a service's path seldom leads there.
constexpr const char* mailers[] = {"/usr/sbin/sendmail", "/usr/lib/sendmail", "/usr/bin/sendmail"};

/// Empty if there is none.
std::string mailer(zn::Registry& registry)
{
    if (const auto value = registry.read(zn::RegistryRoot::Machine, u"Software\\Arkin", u"Sendmail", {}))
        if (const auto path = value->asText(); path && !path->empty())
            return zn::toUtf8(*path);
    for (const char* path : mailers)
        if (std::filesystem::exists(path))
            return path;
    return {};
}

} // namespace

NoticeSender noticeSender(Session& session)
{
    return [&session](NoticeCall call) -> std::string {
        auto& program = call.arguments.front();
        if (program == mailProgram)
            program = mailer(session.platform().registry());
        if (program.empty())
            return "This machine has no sendmail. Install a mailer that brings one, or name a command instead.";
        return zn::runProgram({call.arguments, call.environment, call.input, noticeLimit}, session.platform().clock());
    };
}

} // namespace zn::arkin
