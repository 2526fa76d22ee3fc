#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include <iostream>

namespace zn::arkin {

namespace {

class VaultCreate : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("NAME", m_name, "Name of the vault").required();
        take.option("--root", m_root, "Folder of the vault's files on this machine").required();
    }

    int run(Session& session) override
    {
        const auto vault = session.store().createVault(zn::toText(m_name), session.pathOf(m_root));
        const auto root = session.shown(vault.root);
        if (session.json())
            printJson({{"name", m_name}, {"root", root}});
        else
            std::cout << "Vault '" << m_name << "' is in " << root << ".\n";
        return commandDone;
    }

private:
    std::string m_name;
    std::string m_root;
};

} // namespace

MadeCommand vaultCreateCommand() { return std::make_unique<VaultCreate>(); }

} // namespace zn::arkin
