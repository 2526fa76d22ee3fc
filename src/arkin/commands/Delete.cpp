#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/DeleteFile.h"

#include <iostream>

namespace zn::arkin {

namespace {

class Delete : public Command {
public:
    void declare(Arguments& take) override { take.option("FILE", m_files, "Files of the vault").required(); }

    int run(Session& session) override
    {
        auto deleted = Json::array();
        for (const auto& file : m_files) {
            const auto place = session.fileAt(file);
            const auto path = session.shown(session.vault().pathOf(place));
            deleteFile(session.vault(), place);
            deleted.push_back(path);
            if (!session.json())
                std::cout << path << " is deleted; 'arkin restore' brings it back.\n";
        }
        if (session.json())
            printJson(deleted);
        return commandDone;
    }

private:
    std::vector<std::string> m_files;
};

} // namespace

MadeCommand deleteCommand() { return std::make_unique<Delete>(); }

} // namespace zn::arkin
