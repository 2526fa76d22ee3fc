#pragma once

#include "arkin/desktop/HostDesktop.h"
#include "arkin/store/Vault.h"
#include "arkin/tasks/LaunchFlow.h"
#include "arkin/tasks/TaskDetails.h"
#include "arkin/tasks/TaskSetup.h"
#include "arkin/vault/VaultObject.h"
#include "platform/linux/LinuxPlatform.h"
#include "tests/support/pages/Person.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

/// A home as a new customer sets it up with the programs' own commands: a vault with the sample part, assembly and
/// drawing, the registered add-in and CAD application, and a printer that prints into a folder. The drawing refers to
/// the assembly, and that to the part in its first version; there is a second one.
class Plant : public ::testing::Test {
protected:
    Plant();

    /// Runs one of the programs and returns its output; a test fails with it unless the program ends with 0.
    std::string run(const std::string& command);
    std::filesystem::path model(const std::string& name) const { return folder / "vault/Models/" / name; }
    /// As the host hands a file over; the latest version.
    ArkSelItem selected(const std::string& name);

    /// Opens the task's properties, lets `answer` do what an administrator does there and expects that it is stored.
    void edit(const Text& task, const Answers::Answer& answer);
    /// Launches the task through its dialogs, one answer each; the run's number.
    std::int32_t launch(const Text& task, ArkSelection selection, std::vector<Answers::Answer> answers);
    /// Launches the task and carries it out on a worker process.
    zn::arkin::RunInfo launchAndWork(const Text& task, ArkSelection selection, std::vector<Answers::Answer> answers);
    /// Opens the vault's window in the folder, does it there, and closes the window.
    void explore(const std::string& shownFolder, const std::function<void(QWidget& window)>& work);
    /// Likewise the window of the runs, with this run chosen.
    void monitor(std::int32_t runId, const std::function<void(QWidget& window)>& work);
    /// As somebody else does in the meantime.
    void removeFromVault(const std::string& name);
    /// The cells of the details page, a line a row, separated by " | "; folders shortened to "…".
    std::vector<std::string> details(std::int32_t runId);
    /// Files in the printer's folder with their page counts, in the order of their names: "Stand 2 pages".
    std::vector<std::string> printed();

    /// Brings the page of that title to the front.
    static void turnTo(QWidget& dialog, const QString& title);
    static void pressOk(QWidget& dialog);

    zn::arkin::Vault& vault() { return *m_vault; }

    TemporaryFolder folder;
    LinuxPlatform machine;

private:
    void inWindow(
        const char* name, const std::function<void(QWidget& window)>& work, const std::function<void()>& show);
    void refer(const std::string& from, const std::string& to);

    std::unique_ptr<zn::arkin::Store> m_store;
    std::unique_ptr<zn::arkin::Vault> m_vault;
    std::unique_ptr<zn::arkin::HostDesktop> m_desktop;
    std::shared_ptr<zn::arkin::VaultObject> m_object;
    zn::arkin::TaskHost host();
};

} // namespace zn::test
