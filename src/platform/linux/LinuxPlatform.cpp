#include "platform/linux/LinuxPlatform.h"

namespace zn {

LinuxPlatform::LinuxPlatform(Home home)
    : m_home(std::move(home))
    , m_registry(m_home.registryFile())
    , m_files(m_registry)
    , m_processes(m_files)
    , m_pipe(m_home.runtimeFolder())
    , m_printers(m_registry, m_files)
    , m_products(m_registry)
{
}

Platform LinuxPlatform::with(RunningObjects& runningObjects)
{
    return {m_registry, m_files, m_processes, runningObjects, m_windows, m_pipe, m_clock, m_printers, m_products};
}

} // namespace zn
