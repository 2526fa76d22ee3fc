#pragma once

#include "platform/Home.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/LinuxPrinters.h"
#include "platform/linux/LinuxProcesses.h"
#include "platform/linux/RegistryProducts.h"
#include "platform/linux/SocketPipe.h"
#include "platform/linux/SqliteRegistry.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/XcbTopWindows.h"
#include "platform/Platform.h"

namespace zn {

/// This machine's ports, all but the running object table, which its user brings along.
class LinuxPlatform {
public:
    explicit LinuxPlatform(Home home);

    const Home& home() const { return m_home; }
    SqliteRegistry& registry() { return m_registry; }
    LinuxFileSystem& files() { return m_files; }
    LinuxProcesses& processes() { return m_processes; }
    XcbTopWindows& windows() { return m_windows; }
    SystemClock& clock() { return m_clock; }
    LinuxPrinters& printers() { return m_printers; }
    RegistryProducts& products() { return m_products; }

    /// References to the ports of this object, which must outlive the result, and to `runningObjects`.
    Platform with(RunningObjects& runningObjects);

private:
    Home m_home;
    SqliteRegistry m_registry;
    LinuxFileSystem m_files;
    LinuxProcesses m_processes;
    XcbTopWindows m_windows;
    SocketPipe m_pipe;
    SystemClock m_clock;
    LinuxPrinters m_printers;
    RegistryProducts m_products;
};

} // namespace zn
