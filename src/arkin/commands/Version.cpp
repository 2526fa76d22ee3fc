#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "base/Version.h"

#include <iostream>

namespace zn::arkin {

namespace {

class Version : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        if (session.json())
            printJson({{"version", zn::softwareVersion()}});
        else
            std::cout << "arkin " << zn::softwareVersion() << "\n";
        return commandDone;
    }
};

} // namespace

MadeCommand versionCommand() { return std::make_unique<Version>(); }

} // namespace zn::arkin
