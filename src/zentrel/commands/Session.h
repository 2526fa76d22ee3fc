#pragma once

#include "platform/linux/LinuxPlatform.h"
#include "platform/WorkFolder.h"
#include "zentrel/application/Application.h"
#include "zentrel/commands/ProcessLog.h"
#include "zentrel/formats/ReadAhead.h"

#include <memory>

namespace zn::zentrel {

/// The CAD application in this process, on this machine's ports.
class Session {
public:
    /// What the process that holds the session adds to it; any may be empty.
    struct Hooks {
        std::function<bool()> stopRequested;
        std::function<void()> exit;
        std::function<void(const std::string&)> print;
        /// As `Surroundings::trace`.
        std::function<void(const std::string&)> trace = {};
        /// Whether the log's lines are shown on the error output too.
        bool echo = false;
    };

    /// `home` as on the command line; empty for the environment's. Raises `StatusError`.
    explicit Session(const std::filesystem::path& home, Hooks hooks);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    zn::LinuxPlatform& platform() { return m_platform; }
    const std::shared_ptr<Application>& application() { return m_application; }
    ProcessLog& log() { return m_log; }

private:
    /// What the kernel makes of files is kept for the next run, task and format.
    void useCache();
    /// Keeps a macro's work in these folders by the kernel, too, where it can.
    void runConfined(std::vector<std::filesystem::path> folders, const std::function<void()>& work);

    zn::LinuxPlatform m_platform;
    zn::WorkFolder m_workFolder;
    ProcessLog m_log;
    std::unique_ptr<ReadAhead> m_readAhead; ///< null where files are read when they are opened
    std::shared_ptr<Application> m_application;
    bool m_confinementNoted = false;
};

} // namespace zn::zentrel
