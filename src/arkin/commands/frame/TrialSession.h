#pragma once

#include "arkin/commands/frame/Session.h"
#include "arkin/tasks/TrialHome.h"
#include "platform/WorkFolder.h"

#include <filesystem>
#include <optional>

namespace zn::arkin {

/// A session on a copy of another session's vault, for as long as it lives; see `TrialHome`. Add-ins and programs that
/// are started from now on work with the copy, so nothing is to be done with the other one's meanwhile but to read.
class TrialSession {
public:
    /// All printers print below the folder `printed`, each into a folder that has its name. Raises `StatusError`
    /// with a sentence.
    TrialSession(Session& original, const std::filesystem::path& printed);
    TrialSession(const TrialSession&) = delete;
    TrialSession& operator=(const TrialSession&) = delete;
    ~TrialSession();

    Session& session() { return *m_session; }

private:
    void printInto(const std::filesystem::path& folder);

    Session& m_original;
    zn::WorkFolder m_folder;
    TrialHome m_home;
    std::optional<Session> m_session;
};

} // namespace zn::arkin
