#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include <iostream>

namespace zn::arkin {

namespace {

class CacheShow : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        const auto cache = session.cache();
        const auto amount = cache->amount();
        const auto most = static_cast<std::int64_t>(cache->mostBytes());
        if (session.json()) {
            printJson({{"folder", cache->folder().string()}, {"blocks", amount.blocks}, {"bytes", amount.bytes},
                {"limit", most}});
            return commandDone;
        }
        std::cout << "Folder: " << cache->folder().string() << "\n"
                  << "Holds:  " << amount.blocks << " blocks of " << shownCount(static_cast<std::int64_t>(amount.bytes))
                  << " bytes\n"
                  << "Limit:  " << (most > 0 ? shownCount(most) + " bytes" : "0, nothing is kept") << "\n";
        return commandDone;
    }
};

} // namespace

MadeCommand cacheShowCommand() { return std::make_unique<CacheShow>(); }

} // namespace zn::arkin
