#pragma once

#include "base/Text.h"

#include <cstdint>
#include <span>
#include <string>

namespace zn::arkin {

/// A version of a file at its place in the local view.
struct LocalCopyUse {
    zn::Text path; ///< backslash path
    std::int32_t version = 0;
};

/// The run of a task for which a vault is worked with. What it checks out is its own, also against other runs of the
/// same user.
class ActingRun {
public:
    virtual ~ActingRun() = default;
    virtual std::int32_t id() const = 0;
    /// Raises the failure that says so when another worker has taken the run over. Called in each write transaction.
    virtual void requireHeld() = 0;
    /// Keeps other runs from writing these local copies, and from working with them in other versions, until the run
    /// ends. False if another run has been in the way: it isn't any more, but nothing is kept yet, since what is wanted
    /// may have changed meanwhile. Raises what ended the waiting. Called before the copies are brought, outside of
    /// transactions.
    virtual bool keepLocalCopies(std::span<const LocalCopyUse> copies) = 0;
    /// Whether a file whose content is that of its latest version makes no new one at a check-in.
    virtual bool keepsIdentical() const = 0;
    /// Such a file has been checked in: this version has its content, and by now its card and references.
    virtual void noteIdentical(std::int32_t fileId, std::int32_t version) = 0;
    /// Waits a while for room on a full disk, of which `sentence` tells: a night's work is worth it. False if whoever
    /// carries the run out has been asked to stop.
    virtual bool awaitRoom(const std::string& sentence) = 0;
};

} // namespace zn::arkin
