#pragma once

#include "arkin/desktop/Desktop.h"
#include "arkin/desktop/Display.h"
#include "arkin/desktop/frame/Translation.h"

namespace zn::arkin {

class Application;

/// The desktop on the toolkit. Its application object exists as long as it does, unless the process has one already.
class HostDesktop final : public Desktop {
public:
    /// On the display, if there is one and `wanted`. The display's connection has to outlive the constructor.
    HostDesktop(const Display& display, bool wanted, const Language& language = {});
    ~HostDesktop() override;

    bool canAsk() const override { return m_canAsk; }
    void requireDisplay() const override;
    bool editTask(TaskSetup& setup) override;
    void fillTask(TaskSetup& setup) override;
    std::optional<RunInfo> launchTask(LaunchFlow& launch) override;
    RunInfo launchWithDefaults(LaunchFlow& launch, std::string& taken) override;
    void showDetails(TaskDetails& details) override;
    void showExplorer(const TaskHost& tasks, std::int32_t folderId, const std::filesystem::path& cacheFolder) override;
    void showMonitor(const TaskHost& tasks, std::int32_t runId, const std::filesystem::path& cacheFolder) override;

    std::vector<zn::Text> pickFiles(
        zn::IArkVault& vault, std::int32_t window, bool several, zn::TextView title, zn::TextView filter) override;
    std::shared_ptr<zn::IArkFolder> pickFolder(zn::IArkVault& vault, std::int32_t window, zn::TextView title) override;

private:
    std::string m_problem;
    bool m_canAsk;
    std::unique_ptr<Application> m_application;
    Translation m_translation;
};

} // namespace zn::arkin
