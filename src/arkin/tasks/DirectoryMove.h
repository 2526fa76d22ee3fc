#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>

namespace zn::arkin {

/// Moves a folder to another name, or to another disk. Until `carryOut` the former one is as it was, and nothing works
/// with the new one. All raise `StatusError` E_ARK_LOCAL_FILE_FAILED with a sentence.
class DirectoryMove {
public:
    /// The new folder may be there if it is empty.
    DirectoryMove(std::filesystem::path from, std::filesystem::path to);

    /// Copies what is large beforehand if the new folder lies on another disk. `progress` gets bytes.
    void prepare(const std::function<void(std::int64_t done, std::int64_t total)>& progress);
    /// Renames the folder, or copies what has changed since `prepare`.
    void carryOut();
    /// Takes `carryOut` back.
    void undo();
    /// Removes what was copied from its former place. Why that didn't work; empty if it did.
    std::string removeFormer();

private:
    struct Seen {
        std::uintmax_t size = 0;
        std::filesystem::file_time_type time;
        bool operator==(const Seen&) const = default;
    };

    /// Copies what isn't in `m_copied` as it is now, and removes what has gone.
    void copyChanged(const std::function<void(std::int64_t done, std::int64_t total)>& progress);
    void copy(const std::filesystem::directory_entry& entry, const std::filesystem::path& relative);

    std::filesystem::path m_from, m_to;
    bool m_isRename = true;
    std::map<std::filesystem::path, Seen> m_copied; ///< by their paths below the folder
};

} // namespace zn::arkin
