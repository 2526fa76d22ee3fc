#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zn::arkin {

/// The folder in which the outputs of a trial stay: "vault" has those that would have gone into the vault, "outside"
/// what would have been written elsewhere, "printed" what would have been printed. What stays empty is removed at the
/// end, the folder itself as well if this object has made it.
class TrialFolder {
public:
    /// Makes the folder, or one in the system's temporary folder for an empty name. Raises `StatusError` with a
    /// sentence for one that isn't empty or can't be made.
    explicit TrialFolder(const std::filesystem::path& chosen);
    TrialFolder(const TrialFolder&) = delete;
    TrialFolder& operator=(const TrialFolder&) = delete;
    ~TrialFolder();

    const std::filesystem::path& folder() const { return m_folder; }
    std::filesystem::path outside() const { return m_folder / "outside"; }
    std::filesystem::path printed() const { return m_folder / "printed"; }

    /// Copies files from below `root`.
    void take(const std::vector<std::filesystem::path>& files, const std::filesystem::path& root);
    /// All that is in it, in the order of the paths, which begin below it.
    std::vector<std::string> files() const;

private:
    std::filesystem::path m_folder;
    bool m_isNew = false;
};

} // namespace zn::arkin
