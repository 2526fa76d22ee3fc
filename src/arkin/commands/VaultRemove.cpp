#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/SearchIndex.h"
#include "arkin/tasks/VaultRemoval.h"

#include <iostream>

namespace zn::arkin {

namespace {

class VaultRemove : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("NAME", m_name, "Name of the vault").required();
        take.flag("--yes", m_yes, "Remove it; without this, the command says what would go and removes nothing");
        take.flag("--force", m_force, "Also while files are checked out");
    }

    int run(Session& session) override
    {
        const auto vault = session.store().findVault(zn::toText(m_name));
        if (!vault)
            throw zn::StatusError(zn::E_INVALIDARG,
                "There is no vault named '" + m_name + "' in " + session.platform().home().folder().string() + ".");
        const auto report = m_yes ? removeVault(session.store(), *vault, m_force) : countVault(session.store(), *vault);
        if (m_yes)
            removeSearchIndexes(session.platform().home().cacheFolder());
        const auto root = session.shown(vault->root);
        if (session.json())
            printJson({{"vault", m_name}, {"removed", m_yes}, {"files", report.files}, {"versions", report.versions},
                {"checkedOut", report.checkOuts}, {"tasks", report.tasks}, {"runs", report.runs}, {"root", root},
                {"copy", report.copy.string()}});
        else
            print(report, root);
        return m_yes ? commandDone : commandFailed;
    }

private:
    void print(const VaultRemovalReport& report, const std::string& root) const
    {
        const std::string what = "files: " + shownCount(report.files) + ", versions: " + shownCount(report.versions)
            + ", tasks: " + shownCount(report.tasks) + ", runs: " + shownCount(report.runs);
        if (!m_yes) {
            std::cout << "Vault '" << m_name << "' (" << what << ", checked out: " << shownCount(report.checkOuts)
                      << ") is still there: --yes removes it.\n";
            return;
        }
        std::cout << "Vault '" << m_name << "' is removed (" << what << ").\n"
                  << "The database as it was before is " << report.copy.string() << ".\n"
                  << "The contents stay in the archive until 'arkin vault clean', and the files in " << root
                  << " stay where they are.\n";
    }

    std::string m_name;
    bool m_yes = false;
    bool m_force = false;
};

} // namespace

MadeCommand vaultRemoveCommand() { return std::make_unique<VaultRemove>(); }

} // namespace zn::arkin
