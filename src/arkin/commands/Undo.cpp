#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/CheckOut.h"

#include <iostream>

namespace zn::arkin {

namespace {

class Undo : public Command {
public:
    void declare(Arguments& take) override { take.option("FILE", m_files, "Files of the vault").required(); }

    int run(Session& session) override
    {
        auto undone = Json::array();
        for (const auto& file : m_files) {
            const auto place = session.fileAt(file);
            const auto path = session.shown(session.vault().pathOf(place));
            undoCheckOut(session.vault(), place.fileId);
            undone.push_back(path);
            if (!session.json())
                std::cout << path << " is as in the vault again.\n";
        }
        if (session.json())
            printJson(undone);
        return commandDone;
    }

private:
    std::vector<std::string> m_files;
};

} // namespace

MadeCommand undoCommand() { return std::make_unique<Undo>(); }

} // namespace zn::arkin
