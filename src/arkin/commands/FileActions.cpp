#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/CheckOut.h"
#include "arkin/store/DeleteFile.h"

#include <iostream>

namespace zn::arkin {

namespace {

/// Does the same with each of some files; the subcommands differ in what that is. A file that fails keeps no other one
/// from it.
class FileAction : public Command {
public:
    using Action = void (*)(Vault&, const Place&);
    FileAction(Action act, const char* done)
        : m_act(act)
        , m_done(done)
    {
    }

    void declare(Arguments& take) override { take.option("FILE", m_files, "Files of the vault").required(); }

    int run(Session& session) override
    {
        std::vector<std::string> paths;
        for (const auto& file : m_files) {
            try {
                const auto place = session.fileAt(file);
                const auto path = session.shown(session.vault().pathOf(place));
                m_act(session.vault(), place);
                paths.push_back(path);
                if (!session.json())
                    std::cout << path << " " << m_done << ".\n";
            } catch (const zn::StatusError&) {
                std::cerr << "arkin: " << currentFailure().sentence << "\n";
            }
        }
        if (session.json())
            printJson(paths);
        return paths.size() == m_files.size() ? commandDone : commandFailed;
    }

private:
    Action m_act;
    const char* m_done;
    std::vector<std::string> m_files;
};

} // namespace

MadeCommand checkOutCommand() { return std::make_unique<FileAction>(checkOut, "is checked out"); }

MadeCommand undoCommand()
{
    return std::make_unique<FileAction>(
        [](Vault& vault, const Place& place) { undoCheckOut(vault, place.fileId); }, "is as in the vault again");
}

MadeCommand deleteCommand()
{
    return std::make_unique<FileAction>(deleteFile, "is deleted; 'arkin restore' brings it back");
}

} // namespace zn::arkin
