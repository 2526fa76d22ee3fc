#pragma once

#include "platform/FileDescriptor.h"

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace zn {

class Registry;

/// A folder of blocks of bytes that can be made again, each under a key of 64 hexadecimal digits (a SHA-256 of all that
/// it was made from). Any number of processes of one user use it at a time. It is closed to others, and nothing in it
/// is believed that belongs to another user, that is a link, or whose bytes don't fit the checksum before them.
class ContentCache {
public:
    /// Makes the folder where it is missing. Above `mostBytes` those go that were not asked for the longest. Raises
    /// `std::system_error` if the folder can't be made, or if a link, a file or another user's folder is in the way.
    ContentCache(std::filesystem::path folder, std::uint64_t mostBytes);

    /// None if it isn't there; a damaged one is removed.
    std::optional<std::string> find(const std::string& key);
    /// Becomes visible whole, and isn't synced. More than the limit isn't kept. Raises `std::system_error`.
    void keep(const std::string& key, std::string_view bytes);

    /// Holds the making of a block, so that no other process of the user's makes the same at the time.
    class Turn {
    public:
        Turn(Turn&&) noexcept = default;
        Turn& operator=(Turn&&) = delete;
        ~Turn();

    private:
        friend class ContentCache;
        Turn(FileDescriptor locks, std::int64_t place)
            : m_locks(std::move(locks))
            , m_place(place)
        {
        }
        FileDescriptor m_locks;
        std::int64_t m_place;
    };
    /// None if another process is making that block. A turn ends with its process, and goes on in no child.
    std::optional<Turn> takeTurn(const std::string& key);

    struct Amount {
        std::size_t blocks = 0;
        std::uint64_t bytes = 0;
    };
    Amount amount() const;
    /// Removes all blocks and tells what that was. Who reads one at this moment reads it to its end.
    Amount clear();

    const std::filesystem::path& folder() const { return m_folder; }
    std::uint64_t mostBytes() const { return m_mostBytes; }

private:
    std::filesystem::path fileOf(const std::string& key) const { return m_folder / key; }
    void makeRoom();

    std::filesystem::path m_folder;
    std::uint64_t m_mostBytes;
    std::mutex m_guard;
    std::optional<std::uint64_t> m_taken; ///< as far as this process knows
};

/// How large the cache of a home may grow: the machine's value `Megabytes` of `SOFTWARE\Arkin\Cache`, 2000 without one;
/// 0 turns it off.
std::uint64_t cacheLimit(Registry& registry);

} // namespace zn
