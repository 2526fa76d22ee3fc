#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

namespace zn::arkin {

namespace {

class RightList : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        auto& vault = session.vault();
        auto entries = Json::array();
        std::vector<std::vector<std::string>> rows{{"FOLDER", "USER", "READ", "ADD", "DELETE"}};
        for (const auto& [folderId, user, rights] : vault.permissions().entries(vault.info().id)) {
            const auto folder = session.shown(vault.local().pathOf(folderId, {}));
            entries.push_back({{"folder", folder}, {"user", user}, {"read", rights.read}, {"add", rights.add},
                {"delete", rights.remove}});
            rows.push_back({folder, user, word(rights.read), word(rights.add), word(rights.remove)});
        }
        if (session.json())
            printJson(entries);
        else
            printTable(rows, "No folder says anything about users: everybody may do everything.");
        return commandDone;
    }

private:
    static std::string word(bool allowed) { return allowed ? "yes" : "no"; }
};

} // namespace

MadeCommand rightListCommand() { return std::make_unique<RightList>(); }

} // namespace zn::arkin
