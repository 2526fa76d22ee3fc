#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include <iostream>

namespace zn::arkin {

namespace {

class VariableAdd : public Command {
public:
    void declare(Arguments& take) override { take.option("NAME", m_names, "Names of card variables").required(); }

    int run(Session& session) override
    {
        auto added = Json::array();
        for (const auto& name : m_names)
            added.push_back({{"name", name}, {"id", session.vault().cards().addVariable(zn::toText(name))}});
        if (session.json())
            printJson(added);
        else
            std::cout << "The vault has " << session.vault().cards().variables().size() << " card variables.\n";
        return commandDone;
    }

private:
    std::vector<std::string> m_names;
};

} // namespace

MadeCommand variableAddCommand() { return std::make_unique<VariableAdd>(); }

} // namespace zn::arkin
