#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/store/StoreClean.h"

#include <iostream>

namespace zn::arkin {

namespace {

class VaultClean : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        ProgressLine progress(!session.json());
        const auto report = cleanStore(session.store(),
            [&](std::int64_t done, std::int64_t total) { progress.show(done, total, "contents read"); });
        progress.clear();
        if (!report.check.problems.empty())
            throw zn::StatusError(E_ARK_DATABASE,
                "The vault is not sound, so nothing was set aside; 'arkin vault check' says what is wrong.");
        if (!report.done)
            throw zn::StatusError(E_ARK_ARCHIVE,
                "Another program is adding or backing up files, so nothing was set aside. Try again when it has "
                "ended.");
        if (session.json())
            printJson({{"setAside", report.done->moved}, {"bytes", report.done->bytes}, {"tooNew", report.done->tooNew},
                {"deleted", report.done->deleted}});
        else
            print(session, *report.done);
        return commandDone;
    }

private:
    static void print(Session& session, const Archive::SetAside& done)
    {
        const auto removed = session.store().archive().folder() / "removed";
        if (done.moved > 0)
            std::cout << done.moved << " contents of " << shownCount(done.bytes) << " bytes were set aside to "
                      << removed.string() << "; after " << Archive::keptDays << " days, a clean deletes them.\n";
        if (done.tooNew > 0)
            std::cout << done.tooNew
                      << " contents that belong to no version stay, since they are newer than the newest version: "
                         "work is under way, or the database is an older copy.\n";
        if (done.deleted > 0)
            std::cout << done.deleted << " contents that were set aside more than " << Archive::keptDays
                      << " days ago were deleted.\n";
        if (done.moved + done.tooNew + done.deleted == 0)
            std::cout << "There is nothing to set aside.\n";
    }
};

} // namespace

MadeCommand vaultCleanCommand() { return std::make_unique<VaultClean>(); }

} // namespace zn::arkin
