#pragma once

namespace zn {

class Registry;
class FileSystem;
class Processes;
class RunningObjects;
class TopWindows;
class LocalPipe;
class Clock;
class Printers;
class InstalledProducts;

/// The machine as the add-in sees it: references to its ports, which outlive it. The add-in object gets one at
/// construction, so that a test can hand it a clock that doesn't wait or a registry in memory. There are no globals.
struct Platform {
    Registry& registry;
    FileSystem& files;
    Processes& processes;
    RunningObjects& runningObjects;
    TopWindows& windows;
    LocalPipe& pipe;
    Clock& clock;
    Printers& printers;
    InstalledProducts& products;
};

} // namespace zn
