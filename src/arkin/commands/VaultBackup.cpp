#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/store/Backup.h"

#include <iostream>

namespace zn::arkin {

namespace {

class VaultBackup : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("DIR", m_folder, "Folder of the backups, best on another disk; made if it is missing").required();
        take.option("--keep", m_setting.keep, "So many backups stay in the folder, the newest ones")
            .range(1, 1'000'000)
            .showsDefault();
        take.flag("--verify", m_setting.verify, "Read what the folder holds already, too, and mend it from the vault");
        take.flag("--check", m_check, "Back up nothing; verify all that is in the folder");
        take.flag("--list", m_list, "Back up nothing; list the backups in the folder");
    }

    int run(Session& session) override
    {
        if (m_list)
            return list(session);
        return m_check ? check(session) : backUp(session);
    }

private:
    int backUp(Session& session)
    {
        ProgressLine progress(!session.json());
        const auto report
            = arkin::backUp(session.store(), session.platform().home().registryFile(), m_folder, m_setting,
                [&](std::int64_t done, std::int64_t total) { progress.show(done, total, "contents backed up"); });
        progress.clear();
        if (session.json())
            printJson({{"backup", report.copy}, {"contents", report.contents}, {"bytes", report.bytes},
                {"newContents", report.newContents}, {"newBytes", report.newBytes},
                {"removedBackups", report.removedCopies}, {"removedContents", report.removedContents},
                {"problems", report.problems}});
        else
            print(report);
        return report.problems.empty() ? commandDone : commandFailed;
    }

    void print(const BackupReport& report) const
    {
        std::cout << "Backed up as " << report.copy << ": " << report.contents << " contents of "
                  << shownCount(report.bytes) << " bytes, " << report.newContents << " of them new ("
                  << shownCount(report.newBytes) << " bytes).\n";
        if (report.removedCopies > 0)
            std::cout << "Removed " << report.removedCopies << " older backups and " << report.removedContents
                      << " contents that only they had.\n";
        for (const auto& problem : report.problems)
            std::cout << "Problem: " << problem << "\n";
        if (!report.problems.empty())
            std::cout << "The backup is there without these contents; no older one was removed.\n";
    }

    int check(Session& session) const
    {
        ProgressLine progress(!session.json());
        const auto report = checkBackup(
            m_folder, [&](std::int64_t done, std::int64_t total) { progress.show(done, total, "contents read"); });
        progress.clear();
        if (session.json()) {
            printJson({{"sound", report.problems.empty()}, {"problems", report.problems}, {"backups", report.copies},
                {"contents", report.contents}, {"bytes", report.bytes}});
        } else {
            std::cout << "Checked " << report.copies << " backups with " << report.contents << " contents of "
                      << shownCount(report.bytes) << " bytes.\n";
            for (const auto& problem : report.problems)
                std::cout << "Problem: " << problem << "\n";
            std::cout << (report.problems.empty()
                    ? "The backups are sound.\n"
                    : "The backups are NOT sound. A backup with --verify brings what the vault still has again.\n");
        }
        return report.problems.empty() ? commandDone : commandFailed;
    }

    int list(Session& session) const
    {
        auto entries = Json::array();
        std::vector<std::vector<std::string>> rows{{"BACKUP", "CONTENTS", "BYTES"}};
        BackupFolder backup(m_folder, BackupFolder::Use::Read);
        for (const BackupCopy& copy : backup.copies()) {
            const auto contents = copy.contents();
            std::int64_t bytes = 0;
            for (const Holder& holder : contents)
                bytes += holder.content.size;
            entries.push_back({{"backup", copy.name()}, {"contents", std::ssize(contents)}, {"bytes", bytes}});
            rows.push_back({copy.name(), std::to_string(contents.size()), shownCount(bytes)});
        }
        if (session.json())
            printJson(entries);
        else
            printTable(rows, "There is no whole backup in the folder.");
        return commandDone;
    }

    std::filesystem::path m_folder;
    BackupSetting m_setting;
    bool m_check = false;
    bool m_list = false;
};

} // namespace

MadeCommand vaultBackupCommand() { return std::make_unique<VaultBackup>(); }

} // namespace zn::arkin
