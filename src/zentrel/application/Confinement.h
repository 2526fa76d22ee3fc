#pragma once

#include "platform/FileSystem.h"

#include <string>
#include <vector>

namespace zn::zentrel {

using zn::Text;

/// The folders that macros may reach, where whoever runs them names some. Names of files and values of file cards get
/// into a macro's text, so what a macro does need not be what its author wrote.
///
/// A path is inside if it lies in one of the folders, or is one, after every link on its way has been followed, also
/// one that leads to nothing. Folders and paths are compared as the machine has them.
class Confinement {
public:
    /// `files` outlives this object.
    explicit Confinement(zn::FileSystem& files)
        : m_files(files)
    {
    }

    /// From now on macros reach `folders` (backslash paths; one needn't exist yet) and nothing else. The root of the
    /// file system, and a path that doesn't begin with its drive, are left out: they would confine nothing.
    void confine(const std::vector<Text>& folders);
    /// Adds a folder of the program's own to those that were named.
    void add(const std::filesystem::path& folder);
    bool confines() const { return m_confines; }
    /// What was named and can be reached, links followed.
    const std::vector<std::filesystem::path>& folders() const { return m_folders; }

    /// Whether a macro may reach the canonical path.
    bool reaches(const Text& path) const { return !m_confines || reachOf(path) != Reach::Outside; }
    /// Raises `pathRefused` with a sentence that names the path, and notes it, if a macro may not reach it.
    void require(const Text& path);
    /// The same for what would put away the thing itself: of the folders only what is below them.
    void requireBelow(const Text& path);

    /// The sentences of all refusals since `confine`, each once.
    const std::vector<Text>& refusals() const { return m_refusals; }

private:
    enum class Reach { Outside, Root, Below };
    Reach reachOf(const Text& path) const;
    [[noreturn]] void refuse(const Text& path);

    zn::FileSystem& m_files;
    bool m_confines = false;
    std::vector<std::filesystem::path> m_folders;
    std::vector<Text> m_refusals;
};

} // namespace zn::zentrel
