#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/CheckOut.h"

#include <iostream>

namespace zn::arkin {

namespace {

class CheckOut : public Command {
public:
    void declare(Arguments& take) override { take.option("FILE", m_files, "Files of the vault").required(); }

    int run(Session& session) override
    {
        auto taken = Json::array();
        for (const auto& file : m_files) {
            const auto place = session.fileAt(file);
            checkOut(session.vault(), place);
            const auto path = session.shown(session.vault().pathOf(place));
            taken.push_back(path);
            if (!session.json())
                std::cout << path << " is checked out.\n";
        }
        if (session.json())
            printJson(taken);
        return commandDone;
    }

private:
    std::vector<std::string> m_files;
};

} // namespace

MadeCommand checkOutCommand() { return std::make_unique<CheckOut>(); }

} // namespace zn::arkin
