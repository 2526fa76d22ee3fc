#include "zentrel/commands/Session.h"

#include "platform/ContentCache.h"
#include "platform/KernelConfinement.h"
#include "platform/linux/FolderPrinters.h"
#include "zentrel/kernel/KernelCache.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/kernel/KernelLimits.h"

#include <fmt/format.h>
#include <system_error>
#include <thread>

namespace zn::zentrel {

namespace {

std::string list(const std::vector<std::filesystem::path>& folders)
{
    std::string text;
    for (const auto& folder : folders)
        text += (text.empty() ? "'" : ", '") + folder.string() + "'";
    return text;
}

constexpr char16_t limitsKey[] = u"SOFTWARE\\Zentrel\\Zentrel 2018\\Limits";

/// A positive number of the registry; nothing for anything else.
std::optional<std::size_t> limit(zn::Registry& registry, const char16_t* name)
{
    const auto value = registry.read(zn::RegistryRoot::Machine, limitsKey, name);
    const auto number = value ? value->asNumber() : std::nullopt;
    return number && *number > 0 ? std::optional(static_cast<std::size_t>(*number)) : std::nullopt;
}

KernelLimits limitsFrom(zn::Registry& registry)
{
    constexpr std::size_t megabyte = std::size_t{1} << 20;
    KernelLimits limits;
    if (const auto seconds = limit(registry, u"KernelSeconds"))
        limits.computing = std::chrono::seconds(*seconds);
    limits.memory = limit(registry, u"KernelMegabytes").value_or(0) * megabyte;
    return limits;
}

/// As many as the machine has cores, or as the registry says; one core has nothing to read beside.
std::size_t readersFor(zn::Registry& registry)
{
    const auto value = registry.read(zn::RegistryRoot::Machine, limitsKey, u"Readers");
    if (const auto number = value ? value->asNumber() : std::nullopt; number && *number >= 0)
        return static_cast<std::size_t>(*number);
    const std::size_t cores = std::thread::hardware_concurrency();
    return cores > 1 ? cores : 0;
}

} // namespace

Session::Session(const std::filesystem::path& home, Hooks hooks)
    : m_platform(zn::Home::open(home))
    , m_workFolder(std::filesystem::temp_directory_path(), "zentrel")
    , m_log(m_platform.home().runtimeFolder() / "zentrel.log", hooks.echo)
{
    KernelLimits limits = limitsFrom(m_platform.registry());
    limits.userGone = hooks.stopRequested;
    setKernelLimits(std::move(limits));
    useCache();
    // While this is the only thread, so that the child stays for the macros of all others.
    startKernelServer();
    m_application = std::make_shared<Application>(Surroundings{
        .files = m_platform.files(),
        .printers = m_platform.printers(),
        .workFolder = m_workFolder.path(),
        .log = [this](const std::string& line) { m_log.write(line); },
        .stopRequested = std::move(hooks.stopRequested),
        .exit = std::move(hooks.exit),
        .print = std::move(hooks.print),
        .trace = std::move(hooks.trace),
        .readAhead = m_readAhead ? [this](const auto& files, auto mesh) { m_readAhead->expect(files, mesh); }
                                 : decltype(Surroundings::readAhead)(),
        .confined = [this](const auto& folders, const auto& work) { runConfined(folders, work); },
    });
}

void Session::useCache()
{
    const auto& folder = m_platform.home().cacheFolder();
    const std::uint64_t most = zn::cacheLimit(m_platform.registry());
    if (most == 0)
        return;
    const auto tell = [this](const std::string& line) { m_log.write(line); };
    try {
        setKernelCache(std::make_unique<zn::ContentCache>(folder, most), tell);
        if (const std::size_t readers = readersFor(m_platform.registry()))
            m_readAhead = std::make_unique<ReadAhead>(readers);
    } catch (const std::system_error& error) {
        tell("The cache '" + folder.string() + "' can't be used: " + error.code().message() + ".");
    }
}

Session::~Session() { setKernelCache({}, {}); }

void Session::runConfined(std::vector<std::filesystem::path> folders, const std::function<void()>& work)
{
    // The kernel can't allow what isn't there, and the macro would make the folder when it comes to it.
    std::error_code ignored;
    for (const auto& folder : folders)
        std::filesystem::create_directories(folder, ignored);
    if (!m_confinementNoted) {
        const int version = zn::kernelConfinementVersion();
        m_log.note("Macros are confined to " + list(folders)
            + (version > 0 ? fmt::format(", by this program and by the kernel (Landlock {}).", version)
                           : ", by this program alone: this kernel has no Landlock."));
        m_confinementNoted = true;
    }
    // What the program itself writes while a macro runs.
    folders.push_back(m_platform.home().runtimeFolder());
    folders.push_back(m_platform.home().cacheFolder());
    folders.emplace_back("/dev/null");
    zn::FolderPrinters printers(m_platform.registry(), m_platform.files());
    for (const zn::Printer& printer : printers.list()) {
        try {
            folders.push_back(printers.folderOf(printer.name));
        } catch (const StatusError&) {
            continue; // its folder is on a drive that isn't mapped: nothing will be printed there
        }
    }
    if (!zn::runWithWritesConfined(folders, work) && zn::kernelConfinementVersion() > 0)
        m_log.note("The kernel did not confine this macro; this program did.");
    // One that a macro's thread had to start has gone with it.
    startKernelServer();
}

} // namespace zn::zentrel
