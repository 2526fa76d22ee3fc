#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/store/StoreRepair.h"
#include "arkin/tasks/RunAudit.h"
#include "arkin/tasks/TaskSchema.h"

#include <algorithm>
#include <iostream>

namespace zn::arkin {

namespace {

class VaultRepair : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("--from", m_backup, "Folder of the vault's backups").shownAs("DIR");
        take.option("--accept", m_setting.accepted, "A damaged row that is right as it stands")
            .shownAs("TABLE:ROW")
            .oneAtATime();
        take.flag("--dry-run", m_setting.dryRun, "Say what would be mended, and change nothing");
    }

    int run(Session& session) override
    {
        if (m_backup)
            m_setting.backup = *m_backup;
        m_setting.areas = {&vaultSchema, &taskSchema};
        m_setting.otherProblems = [&] { return auditProblems(session.store().database()); };
        ProgressLine progress(!session.json());
        const auto findings = repairStore(session.store(), m_setting,
            [&](std::int64_t done, std::int64_t total) { progress.show(done, total, "contents read"); });
        progress.clear();
        const bool sound = std::ranges::all_of(findings, &RepairFinding::mended);
        if (session.json())
            printJson({{"sound", sound && !changesNothing(findings)}, {"dryRun", m_setting.dryRun},
                {"findings", toJson(findings)}});
        else
            print(findings, sound);
        return sound ? commandDone : commandFailed;
    }

private:
    /// A dry run leaves what it found.
    bool changesNothing(const std::vector<RepairFinding>& findings) const
    {
        return m_setting.dryRun && !findings.empty();
    }

    static Json toJson(const std::vector<RepairFinding>& findings)
    {
        auto rows = Json::array();
        for (const RepairFinding& finding : findings)
            rows.push_back({{"problem", finding.problem}, {"mended", finding.mended}, {"how", finding.how}});
        return rows;
    }

    void print(const std::vector<RepairFinding>& findings, bool sound) const
    {
        const char* mended = m_setting.dryRun ? "could be mended: " : "mended: ";
        for (const RepairFinding& finding : findings)
            std::cout << "Problem: " << finding.problem << "\n  " << (finding.mended ? mended : "not mended, because ")
                      << finding.how << ".\n";
        if (changesNothing(findings))
            std::cout << "Nothing was changed.\n";
        else
            std::cout << (sound ? "The vault is sound.\n" : "The vault is NOT sound.\n");
    }

    std::optional<std::string> m_backup;
    RepairSetting m_setting;
};

} // namespace

MadeCommand vaultRepairCommand() { return std::make_unique<VaultRepair>(); }

} // namespace zn::arkin
