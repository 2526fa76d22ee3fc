#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/tasks/VaultMove.h"

#include <iostream>

namespace zn::arkin {

namespace {

std::string counted(std::int32_t count, const std::string& one, const std::string& many)
{
    return count == 1 ? "1 " + one : std::to_string(count) + " " + many;
}

/// Both commands give a vault another local folder.
class NewRoot : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("DIR", m_root, "The new folder of the vault's files on this machine").required();
    }

protected:
    void print(Session& session, const VaultMoveReport& report, const char* verb) const
    {
        const auto from = session.shown(report.from), to = session.shown(report.to);
        if (session.json()) {
            printJson({{"from", from}, {"root", to}, {"settings", report.tasks}, {"schedules", report.schedules},
                {"waitingRuns", report.waitingRuns}, {"checkedOut", report.checkOuts},
                {"otherMachines", report.otherMachines}, {"leftBehind", report.leftBehind}});
            return;
        }
        std::cout << "Vault '" << zn::toUtf8(session.vaultInfo().name) << "' " << verb << " " << to << ".\n";
        for (const auto& setting : report.tasks)
            std::cout << "Setting of a task that leads there now: " << setting << "\n";
        if (report.schedules + report.waitingRuns > 0)
            std::cout << counted(report.schedules, "schedule", "schedules") << " and "
                      << counted(report.waitingRuns, "waiting run", "waiting runs") << " follow.\n";
        if (report.otherMachines > 0)
            printNote("The copies on other machines are not known any more: files are brought anew there.");
        if (report.checkOuts > 0)
            printNote(counted(report.checkOuts, "file is", "files are") + " checked out, with local copies in " + from
                + ": copy what was changed to the new folder before you check it in, or undo the check-outs.");
        printNote(report.leftBehind);
    }

    std::string m_root;
};

class VaultMove : public NewRoot {
public:
    int run(Session& session) override
    {
        ProgressLine progress(!session.json());
        const auto report = moveVault(session.store(), session.vaultInfo(), session.pathOf(m_root),
            [&](std::int64_t done, std::int64_t total) { progress.show(done, total, "bytes copied"); });
        progress.clear();
        print(session, report, "has moved to");
        return report.leftBehind.empty() ? commandDone : commandFailed;
    }
};

class VaultRelocate : public NewRoot {
public:
    int run(Session& session) override
    {
        print(session, relocateVault(session.store(), session.vaultInfo(), session.pathOf(m_root)), "works with");
        return commandDone;
    }
};

} // namespace

MadeCommand vaultMoveCommand() { return std::make_unique<VaultMove>(); }
MadeCommand vaultRelocateCommand() { return std::make_unique<VaultRelocate>(); }

} // namespace zn::arkin
