#include "arkin/commands/frame/TrialFolder.h"

#include "base/Status.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void refuse(const std::string& sentence) { throw zn::StatusError(zn::E_INVALIDARG, sentence); }

fs::path newTemporaryFolder()
{
    std::string name = (fs::temp_directory_path() / "arkin-tried-XXXXXX").string();
    if (!::mkdtemp(name.data()))
        refuse("A folder for the outputs can't be made as " + name + ": " + std::strerror(errno)
            + ". Name one with --output.");
    return name;
}

/// Removes the folders in a folder in which there is no file.
void removeEmptyFolders(const fs::path& folder)
{
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(folder, ignored)) {
        if (!entry.is_directory() || entry.is_symlink())
            continue;
        removeEmptyFolders(entry.path());
        if (fs::is_empty(entry.path(), ignored))
            fs::remove(entry.path(), ignored);
    }
}

} // namespace

TrialFolder::TrialFolder(const fs::path& chosen)
{
    if (chosen.empty()) {
        m_folder = newTemporaryFolder();
        m_isNew = true;
    } else {
        m_folder = fs::absolute(chosen).lexically_normal();
        std::error_code error;
        m_isNew = fs::create_directories(m_folder, error);
        if (error)
            refuse("The folder " + m_folder.string() + " can't be made: " + error.message() + ".");
        if (!fs::is_empty(m_folder, error) || error)
            refuse("The folder " + m_folder.string() + " isn't empty. Name a new one for the outputs.");
    }
    fs::create_directories(outside());
    fs::create_directories(printed());
}

TrialFolder::~TrialFolder()
{
    removeEmptyFolders(m_folder);
    std::error_code ignored;
    if (m_isNew && fs::is_empty(m_folder, ignored))
        fs::remove(m_folder, ignored);
}

void TrialFolder::take(const std::vector<fs::path>& files, const fs::path& root)
{
    for (const fs::path& file : files) {
        const fs::path target = m_folder / "vault" / file.lexically_relative(root);
        fs::create_directories(target.parent_path());
        fs::copy_file(file, target);
        fs::permissions(target, fs::perms::owner_write, fs::perm_options::add); // nobody's local copy any more
    }
}

std::vector<std::string> TrialFolder::files() const
{
    std::vector<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(m_folder))
        if (entry.is_regular_file())
            found.push_back(entry.path().lexically_relative(m_folder).string());
    std::ranges::sort(found);
    return found;
}

} // namespace zn::arkin
