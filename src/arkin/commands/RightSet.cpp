#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include <iostream>

namespace zn::arkin {

namespace {

class RightSet : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("FOLDER", m_folder, "Folder of the vault").required();
        take.option("USER", m_user, "User of this machine").required();
        take.flag("--no-read", m_noRead, "Neither see files nor get them");
        take.flag("--no-add", m_noAdd, "Add no files and make no versions");
        take.flag("--no-delete", m_noDelete, "Delete no files");
        take.flag("--inherit", m_inherit, "Take the folder's entry away: the folders above decide again");
    }

    int run(Session& session) override
    {
        auto& vault = session.vault();
        const auto folder = session.folderAt(m_folder);
        const Rights rights{!m_noRead, !m_noAdd, !m_noDelete};
        if (m_inherit)
            vault.permissions().inherit(folder, zn::toText(m_user));
        else
            vault.permissions().set(folder, zn::toText(m_user), rights);
        if (!session.json())
            std::cout << sentence(rights) << "\n";
        else
            printJson({{"folder", m_folder}, {"user", m_user}, {"inherits", m_inherit}, {"read", rights.read},
                {"add", rights.add}, {"delete", rights.remove}});
        return commandDone;
    }

private:
    std::string sentence(const Rights& rights) const
    {
        if (m_inherit)
            return "In " + m_folder + " the folders above decide again what " + m_user + " may do.";
        const std::pair<bool, const char*> words[]
            = {{rights.read, "read"}, {rights.add, "add"}, {rights.remove, "delete"}};
        std::string may, mayNot;
        for (const auto& [allowed, word] : words)
            (allowed ? may : mayNot) += (allowed ? may : mayNot).empty() ? word : std::string(", ") + word;
        return "In " + m_folder + " and below, " + m_user + " may " + (may.empty() ? "do nothing" : may)
            + (mayNot.empty() || may.empty() ? "." : ", but not " + mayNot + ".");
    }

    std::string m_folder;
    std::string m_user;
    bool m_noRead = false;
    bool m_noAdd = false;
    bool m_noDelete = false;
    bool m_inherit = false;
};

} // namespace

MadeCommand rightSetCommand() { return std::make_unique<RightSet>(); }

} // namespace zn::arkin
