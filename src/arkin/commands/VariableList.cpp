#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

namespace zn::arkin {

namespace {

class VariableList : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        auto list = Json::array();
        std::vector<std::vector<std::string>> rows{{"ID", "NAME"}};
        for (const auto& variable : session.vault().cards().variables()) {
            list.push_back({{"id", variable.id}, {"name", zn::toUtf8(variable.name)}});
            rows.push_back({std::to_string(variable.id), zn::toUtf8(variable.name)});
        }
        if (session.json())
            printJson(list);
        else
            printTable(rows, "The vault has no card variables; 'arkin variable add NAME' adds one.");
        return commandDone;
    }
};

} // namespace

MadeCommand variableListCommand() { return std::make_unique<VariableList>(); }

} // namespace zn::arkin
