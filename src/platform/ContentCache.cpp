#include "platform/ContentCache.h"

#include "platform/AtomicFile.h"
#include "platform/PrivateFiles.h"
#include "platform/Registry.h"
#include "platform/Sha256.h"
#include "platform/WorkFolder.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <vector>

namespace zn {

namespace {

constexpr std::size_t digestSize = 64;

constexpr std::int32_t usualMegabytes = 2000;

std::string digestOf(std::string_view bytes)
{
    Sha256 hash;
    hash.update(bytes);
    return hash.finish();
}

bool isKey(const std::string& name)
{
    return name.size() == digestSize && name.find_first_not_of("0123456789abcdef") == std::string::npos;
}

bool readAll(const FileDescriptor& file, std::string& bytes)
{
    for (std::size_t at = 0; at < bytes.size();) {
        const ssize_t got = ::read(file.number(), bytes.data() + at, bytes.size() - at);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        at += static_cast<std::size_t>(got);
    }
    return true;
}

struct Block {
    std::filesystem::path file;
    std::uint64_t bytes = 0;
    timespec used{};
};

/// The blocks of this user's in a folder that others may be writing to.
std::vector<Block> blocksIn(const std::filesystem::path& folder)
{
    std::vector<Block> blocks;
    std::error_code ignored;
    for (std::filesystem::directory_iterator entry(folder, ignored), end; entry != end; entry.increment(ignored)) {
        struct stat facts { };
        if (isKey(entry->path().filename()) && ::lstat(entry->path().c_str(), &facts) == 0 && S_ISREG(facts.st_mode))
            blocks.push_back({entry->path(), static_cast<std::uint64_t>(facts.st_size), facts.st_mtim});
    }
    return blocks;
}

std::uint64_t bytesOf(const std::vector<Block>& blocks)
{
    std::uint64_t bytes = 0;
    for (const Block& block : blocks)
        bytes += block.bytes;
    return bytes;
}

bool isEarlier(const Block& a, const Block& b)
{
    return a.used.tv_sec != b.used.tv_sec ? a.used.tv_sec < b.used.tv_sec : a.used.tv_nsec < b.used.tv_nsec;
}

void requireOwn(const std::filesystem::path& folder)
{
    struct stat facts { };
    if (::lstat(folder.c_str(), &facts) != 0)
        throw std::system_error(errno, std::generic_category(), folder.string());
    if (facts.st_uid != ::geteuid())
        throw std::system_error(EACCES, std::generic_category(), folder.string() + " belongs to another user");
}

} // namespace

ContentCache::ContentCache(std::filesystem::path folder, std::uint64_t mostBytes)
    : m_folder(std::move(folder))
    , m_mostBytes(mostBytes)
{
    makePrivateFolder(m_folder, Sharing::Nobody);
    requireOwn(m_folder);
}

std::optional<std::string> ContentCache::find(const std::string& key)
{
    const FileDescriptor file(::open(fileOf(key).c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat facts { };
    if (!file || ::fstat(file.number(), &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_uid != ::geteuid())
        return {};
    std::string digest(digestSize, '\0');
    const auto size = static_cast<std::size_t>(facts.st_size);
    std::string bytes(size < digestSize ? 0 : size - digestSize, '\0');
    if (!readAll(file, digest) || !readAll(file, bytes) || digestOf(bytes) != digest) {
        ::unlink(fileOf(key).c_str());
        return {};
    }
    // Its time says when it was last of use; a failure costs it some of its life.
    ::futimens(file.number(), nullptr);
    return bytes;
}

void ContentCache::keep(const std::string& key, std::string_view bytes)
{
    const std::uint64_t size = bytes.size() + digestSize;
    if (size > m_mostBytes)
        return;
    AtomicFile file(fileOf(key));
    file.write(digestOf(bytes));
    file.write(bytes);
    file.commit(AtomicFile::Sync::No);
    const std::lock_guard turn(m_guard);
    m_taken = m_taken ? *m_taken + size : bytesOf(blocksIn(m_folder));
    if (*m_taken > m_mostBytes)
        makeRoom();
}

namespace {

/// One byte of the file of locks stands for a key. A lock of the open file, which no other opening of it shares.
struct flock lockAt(std::int64_t place, short type)
{
    struct flock lock { };
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = place;
    lock.l_len = 1;
    return lock;
}

} // namespace

std::optional<ContentCache::Turn> ContentCache::takeTurn(const std::string& key)
{
    constexpr std::size_t digits = 15; // of 16 values each: as many as a place in a file can be
    const auto place = static_cast<std::int64_t>(std::stoull(key.substr(0, digits), nullptr, 16));
    const auto file = m_folder / "locks";
    FileDescriptor locks(::open(file.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
    struct flock lock = lockAt(place, F_WRLCK);
    // Where nothing can be locked, two may make the same: that costs time only.
    if (locks && ::fcntl(locks.number(), F_OFD_SETLK, &lock) != 0 && (errno == EAGAIN || errno == EACCES))
        return std::nullopt;
    return Turn(std::move(locks), place);
}

ContentCache::Turn::~Turn()
{
    struct flock lock = lockAt(m_place, F_UNLCK);
    // Said, as a child that was born meanwhile has the file open, too.
    if (m_locks)
        ::fcntl(m_locks.number(), F_OFD_SETLK, &lock);
}

void ContentCache::makeRoom()
{
    const FileDescriptor lock = lockOwnFolder(m_folder);
    if (!lock)
        return; // another process is at it
    std::vector<Block> blocks = blocksIn(m_folder);
    std::uint64_t taken = bytesOf(blocks);
    // Some more than is needed, so that the next few need none.
    const std::uint64_t wanted = m_mostBytes / 10 * 9;
    std::sort(blocks.begin(), blocks.end(), isEarlier);
    for (const Block& block : blocks) {
        if (taken <= wanted)
            break;
        if (::unlink(block.file.c_str()) == 0 || errno == ENOENT)
            taken -= block.bytes;
    }
    m_taken = taken;
}

ContentCache::Amount ContentCache::amount() const
{
    const std::vector<Block> blocks = blocksIn(m_folder);
    return {blocks.size(), bytesOf(blocks)};
}

ContentCache::Amount ContentCache::clear()
{
    Amount removed;
    for (const Block& block : blocksIn(m_folder)) {
        if (::unlink(block.file.c_str()) != 0 && errno != ENOENT)
            throw std::system_error(errno, std::generic_category(), block.file.string());
        ++removed.blocks;
        removed.bytes += block.bytes;
    }
    return removed;
}

std::uint64_t cacheLimit(Registry& registry)
{
    const auto value = registry.read(RegistryRoot::Machine, u"SOFTWARE\\Arkin\\Cache", u"Megabytes");
    const std::int32_t megabytes = (value ? value->asNumber() : std::nullopt).value_or(usualMegabytes);
    return megabytes > 0 ? static_cast<std::uint64_t>(megabytes) << 20 : 0;
}

} // namespace zn
