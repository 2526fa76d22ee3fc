#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/store/RestoreHome.h"
#include "arkin/store/VaultPlace.h"

#include <iostream>

namespace zn::arkin {

namespace {

class VaultRestore : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("DIR", m_folder, "Folder of the backups").required();
        take.option("--to", m_home, "The home to make").required().shownAs("HOME");
        take.option("--at", m_setting.at, "The newest backup of this time (UTC), such as 2026-11-22; else the newest");
        take.flag("--replace", m_setting.replace, "Move a home that is there aside; end its workers before");
    }

    int run(Session& session) override
    {
        ProgressLine progress(!session.json());
        const auto report = restoreHome(m_folder, m_home, m_setting,
            [&](std::int64_t done, std::int64_t total) { progress.show(done, total, "contents restored"); });
        progress.clear();
        // Opening it shows that its halves belong together.
        Session restored({.home = m_home.string(), .vault = {}, .json = session.json()});
        std::vector<std::string> roots;
        bool isCopy = false;
        for (const auto& vault : restored.store().vaults()) {
            roots.push_back(restored.shown(vault.root));
            isCopy = isCopy || otherHome(restored.store(), vault);
        }
        if (session.json())
            printJson({{"backup", report.copy}, {"home", m_home.string()}, {"contents", report.contents},
                {"bytes", report.bytes}, {"roots", roots}, {"isCopy", isCopy}, {"replaced", report.replaced.string()},
                {"problems", report.problems}});
        else
            print(report, roots, isCopy);
        return report.problems.empty() ? commandDone : commandFailed;
    }

private:
    void print(const RestoreReport& report, const std::vector<std::string>& roots, bool isCopy) const
    {
        std::cout << "Restored " << report.copy << " to " << m_home.string() << ": " << report.contents
                  << " contents of " << shownCount(report.bytes) << " bytes.\n";
        if (!report.replaced.empty())
            std::cout << "The former home is now " << report.replaced.string() << ".\n";
        for (const auto& problem : report.problems)
            std::cout << "Problem: " << problem << "\n";
        if (!report.problems.empty())
            std::cout << "The home is there without these contents.\n";
        for (const auto& root : roots)
            printNote("The vault's local folder is " + root + ".");
        if (isCopy)
            printNote(
                "The home that was backed up still works with it. This one can be read; 'arkin vault relocate DIR "
                "--home "
                + m_home.string() + "' gives it a folder of its own.");
    }

    std::filesystem::path m_folder, m_home;
    RestoreSetting m_setting;
};

} // namespace

MadeCommand vaultRestoreCommand() { return std::make_unique<VaultRestore>(); }

} // namespace zn::arkin
