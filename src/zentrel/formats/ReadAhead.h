#pragma once

#include "platform/FileDescriptor.h"
#include "zentrel/formats/Mesh.h"

#include <filesystem>
#include <optional>
#include <set>
#include <sys/types.h>
#include <vector>

namespace zn::zentrel {

/// Reads foreign files that will be asked for later, in processes beside this one, and meshes them where that is what
/// for, so that what is made of them lies in the cache by then. Needs a cache (`setKernelCache`); without one the work
/// would be for nobody.
///
/// A reader takes the next file when it is done with one, and ends with this object or with the thread that made it.
/// What can't be read is told of when somebody opens it, not here.
class ReadAhead {
public:
    /// Starts no process yet; at most `most` later, and one for each gigabyte that the machine has free.
    explicit ReadAhead(std::size_t most)
        : m_most(most)
    {
    }
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;
    ~ReadAhead();

    /// Those that come next, the first one first; they are read in that order, each once, and meshed if a quality is
    /// given. Files that no reader takes are passed over. Never waits.
    void expect(const std::vector<std::filesystem::path>& files, std::optional<MeshQuality> mesh = {});

private:
    bool isStarted();
    void startReader(const zn::FileDescriptor& readersEnd);

    std::size_t m_most;
    bool m_tried = false;
    zn::FileDescriptor m_queue;
    std::vector<pid_t> m_readers;
    std::set<std::filesystem::path> m_expected;
};

} // namespace zn::zentrel
