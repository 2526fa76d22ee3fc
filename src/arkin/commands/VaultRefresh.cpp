#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/store/Outlines.h"

#include <iostream>

namespace zn::arkin {

namespace {

class VaultRefresh : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        ProgressLine progress(!session.json());
        const auto report = refreshOutlines(session.vault(),
            [&](std::int64_t done, std::int64_t total) { progress.show(done, total, "documents read"); });
        progress.clear();
        if (session.json()) {
            printJson({{"documents", report.documents}, {"problems", report.problems}});
            return commandDone;
        }
        std::cout << "Read " << shownCount(report.documents) << " documents.\n";
        for (const auto& problem : report.problems)
            std::cout << "Note: " << problem << "\n";
        return commandDone;
    }
};

} // namespace

MadeCommand vaultRefreshCommand() { return std::make_unique<VaultRefresh>(); }

} // namespace zn::arkin
