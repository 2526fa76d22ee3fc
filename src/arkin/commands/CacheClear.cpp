#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/SearchIndex.h"

#include <iostream>

namespace zn::arkin {

namespace {

class CacheClear : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        const auto removed = session.cache()->clear();
        removeSearchIndexes(session.platform().home().cacheFolder());
        if (session.json())
            printJson({{"blocks", removed.blocks}, {"bytes", removed.bytes}});
        else
            std::cout << "Removed " << removed.blocks << " blocks of "
                      << shownCount(static_cast<std::int64_t>(removed.bytes)) << " bytes.\n";
        return commandDone;
    }
};

} // namespace

MadeCommand cacheClearCommand() { return std::make_unique<CacheClear>(); }

} // namespace zn::arkin
