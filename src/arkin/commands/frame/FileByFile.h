#pragma once

#include "arkin/commands/frame/Command.h"
#include "arkin/store/Vault.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace zn::arkin {

/// Does the same with each of some files, one after the other. A file that fails keeps no other one from it.
class FileByFile {
public:
    /// What is done with a file, and what is said of it then: "PATH `done`."
    struct Action {
        std::function<void(Vault&, const Place&)> act;
        const char* done;
    };

    FileByFile(Session& session, Action action)
        : m_session(session)
        , m_action(std::move(action))
    {
    }

    /// `where` finds the file; what it raises is the file's failure, too.
    void work(const std::function<Place()>& where);
    /// Prints the paths with --json. The command's exit code.
    int end();

private:
    Session& m_session;
    Action m_action;
    std::vector<std::string> m_paths; ///< of the files that went well
    bool m_failed = false;
};

} // namespace zn::arkin
