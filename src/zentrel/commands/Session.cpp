#include "zentrel/commands/Session.h"

namespace zn::zentrel {

Session::Session(const std::filesystem::path& home, Hooks hooks)
    : m_platform(zn::Home::open(home))
    , m_workFolder(std::filesystem::temp_directory_path(), "zentrel")
    , m_log(m_platform.home().runtimeFolder() / "zentrel.log", hooks.echo)
{
    m_application = std::make_shared<Application>(Surroundings{
        .files = m_platform.files(),
        .printers = m_platform.printers(),
        .workFolder = m_workFolder.path(),
        .log = [this](const std::string& line) { m_log.write(line); },
        .stopRequested = std::move(hooks.stopRequested),
        .exit = std::move(hooks.exit),
        .print = std::move(hooks.print),
    });
}

} // namespace zn::zentrel
