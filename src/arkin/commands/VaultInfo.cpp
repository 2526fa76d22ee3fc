#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include <iostream>

namespace zn::arkin {

namespace {

class VaultInfoCommand : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        const auto vault = session.vaultInfo();
        const auto caller = Caller::current();
        const auto& home = session.platform().home();
        const std::pair<const char*, std::string> rows[]
            = {{"name", zn::toUtf8(vault.name)}, {"root", session.shown(vault.root)}, {"home", home.folder().string()},
                {"database", home.databaseFile().string()}, {"archive", home.archiveFolder().string()},
                {"registry", home.registryFile().string()}, {"user", caller.user}, {"machine", caller.machine}};
        auto info = Json::object();
        for (const auto& [name, value] : rows) {
            info[name] = value;
            if (!session.json())
                std::cout << name << std::string(10 - std::string_view(name).size(), ' ') << value << "\n";
        }
        if (session.json())
            printJson(info);
        return commandDone;
    }
};

} // namespace

MadeCommand vaultInfoCommand() { return std::make_unique<VaultInfoCommand>(); }

} // namespace zn::arkin
