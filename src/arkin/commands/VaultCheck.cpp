#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/store/StoreCheck.h"
#include "arkin/tasks/RunAudit.h"

#include <iostream>

namespace zn::arkin {

namespace {

class VaultCheck : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        ProgressLine progress(!session.json());
        auto report = checkStore(session.store(),
            [&](std::int64_t done, std::int64_t total) { progress.show(done, total, "contents read"); });
        for (std::string& problem : auditProblems(session.store().database()))
            report.problems.push_back(std::move(problem));
        progress.clear();
        if (session.json())
            printJson(toJson(report));
        else
            print(report);
        return report.problems.empty() ? commandDone : commandFailed;
    }

private:
    static Json toJson(const CheckReport& report)
    {
        return {{"sound", report.problems.empty()}, {"problems", report.problems}, {"notes", report.notes},
            {"files", report.files}, {"deletedFiles", report.deletedFiles}, {"versions", report.versions},
            {"contents", report.contents}, {"bytes", report.bytes}, {"checkedOut", report.checkedOut}};
    }

    static void print(const CheckReport& report)
    {
        std::cout << "Checked " << report.files << " files with " << report.versions << " versions, " << report.contents
                  << " contents of " << shownCount(report.bytes) << " bytes; " << report.checkedOut
                  << " files are checked out.\n";
        for (const auto& note : report.notes)
            std::cout << "Note: " << note << "\n";
        for (const auto& problem : report.problems)
            std::cout << "Problem: " << problem << "\n";
        std::cout << (report.problems.empty() ? "The vault is sound.\n" : "The vault is NOT sound.\n");
    }
};

} // namespace

MadeCommand vaultCheckCommand() { return std::make_unique<VaultCheck>(); }

} // namespace zn::arkin
