#pragma once

#include "arkin/commands/frame/Session.h"
#include "arkin/tasks/RunStore.h"

namespace zn::arkin {

/// Small pictures of outputs for a page, as elements of HTML that need nothing from elsewhere: images as they are, the
/// first page of a PDF where the machine has `pdftoppm`, what a program of the machine's settings draws (the CAD
/// application registers itself for it), and for all else an icon with the file's extension, which doesn't pretend to
/// show it.
class OutputPictures {
public:
    explicit OutputPictures(Session& session)
        : m_session(session)
    {
    }

    /// Of the version that the run made, whatever became of the file since. Empty for a result without an output.
    std::string of(const RunInfo& run, const RunFileResult& result);

private:
    struct Kept {
        std::filesystem::path file;
        std::string hash; ///< empty outside the vault
    };
    std::optional<Kept> contentOf(const RunInfo& run, const RunFileResult& result);
    std::unique_ptr<zn::ContentCache> usableCache();
    std::string drawn(const Kept& content, const zn::Text& extension);

    Session& m_session;
    int m_drawn = 0;
};

} // namespace zn::arkin
