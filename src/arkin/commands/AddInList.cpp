#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/tasks/AddInModule.h"

namespace zn::arkin {

namespace {

class AddInList : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        auto list = Json::array();
        std::vector<std::vector<std::string>> rows{{"PROGRAM IDENTIFIER", "CLASS", "LIBRARY"}};
        for (const auto& addIn : registeredAddIns(session.platform().registry())) {
            const auto library = session.shown(addIn.library);
            list.push_back({{"programId", zn::toUtf8(addIn.programId)}, {"classId", zn::toUtf8(addIn.classId)},
                {"library", library}});
            rows.push_back({zn::toUtf8(addIn.programId), zn::toUtf8(addIn.classId), library});
        }
        if (session.json())
            printJson(list);
        else
            printTable(rows, "No add-in is registered; 'arkin addin register' registers the installed one.");
        return commandDone;
    }
};

} // namespace

MadeCommand addInListCommand() { return std::make_unique<AddInList>(); }

} // namespace zn::arkin
