// Preloaded into the crash driver. Counts what a program does to the disk below the folder CRASH_ROOT (writes, syncs,
// renames, removals, new folders) and ends the process at a chosen point, by the variable CRASH_AT:
//
//   count        writes the number of points to standard error at the end
//   kill:N       the process dies just before point N; a write at that point gets half of its bytes out
//   power:N      likewise, and everything that was not synced is gone, as after a loss of power: bytes written since
//   the
//                file's last sync, and names made, moved or removed since their folder's last sync
//   reorder:N:SEED  likewise, but each step that was not synced is gone or there, as the disk may have taken them in
//   any
//                order
//   full:BYTES   from this number of written bytes on the disk is full
//
// The model of a loss of power is the strictest that the rules for syncing allow.

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <dlfcn.h>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>
#include <vector>

namespace {

template <class Function> Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

std::string parentOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

std::string pathOf(int descriptor)
{
    char buffer[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = readlink(link.c_str(), buffer, sizeof buffer);
    return length > 0 ? std::string(buffer, static_cast<std::size_t>(length)) : std::string();
}

/// What a loss of power takes back.
struct Undo {
    enum Kind { Bytes, NewName, Rename, Removal, NewFolder } kind;
    ino_t inode = 0;
    std::string path, otherPath; ///< the name after the step; the one before it, or where the removed file is kept
    off_t offset = 0, size = 0;  ///< bytes: where, and the file's size before
    std::string bytes;           ///< what stood there before
};

class Shim {
public:
    Shim()
    {
        const char* root = std::getenv("CRASH_ROOT");
        const char* at = std::getenv("CRASH_AT");
        if (!root || !at)
            return;
        m_root = root;
        const std::string_view text = at;
        const std::string_view mode = text.substr(0, text.find(':'));
        char* rest = nullptr;
        const long number = text.size() > mode.size() ? std::strtol(at + mode.size() + 1, &rest, 10) : 0;
        m_counts = mode == "count";
        m_losesPower = mode == "power" || mode == "reorder";
        if (mode == "reorder" && *rest == ':')
            m_chance.emplace(static_cast<unsigned>(std::strtoul(rest + 1, nullptr, 10)));
        if (mode == "kill" || m_losesPower)
            m_lastPoint = number;
        if (mode == "full")
            m_bytesLeft = number;
    }

    ~Shim()
    {
        if (m_counts)
            std::fprintf(stderr, "%ld\n", m_points);
    }

    bool watches(const std::string& path) const
    {
        return !m_root.empty() && path.starts_with(m_root) && !path.ends_with("-shm");
    }
    bool losesPower() const { return m_losesPower; }

    /// True when the process is to die now.
    bool isLastPoint() { return ++m_points == m_lastPoint; }

    [[noreturn]] void die()
    {
        if (m_losesPower)
            undoAll();
        kill(getpid(), SIGKILL);
        for (;;)
            pause();
    }

    void point()
    {
        if (isLastPoint())
            die();
    }

    /// How many of the bytes still fit on the disk.
    std::size_t fitting(std::size_t count)
    {
        if (!m_bytesLeft)
            return count;
        const std::size_t fits = std::min(count, static_cast<std::size_t>(*m_bytesLeft));
        *m_bytesLeft -= static_cast<long>(fits);
        return fits;
    }

    void noteBytes(int descriptor, const std::string& path, off_t offset, std::size_t count)
    {
        if (!m_losesPower)
            return;
        struct stat status { };
        fstat(descriptor, &status);
        Undo undo{Undo::Bytes, status.st_ino, path, {}, offset, status.st_size, std::string(count, '\0')};
        const ssize_t got = pread(ownDescriptor(status.st_ino, path), undo.bytes.data(), count, offset);
        undo.bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
        m_undo.push_back(std::move(undo));
    }

    void note(Undo undo)
    {
        if (m_losesPower)
            m_undo.push_back(std::move(undo));
    }

    void synced(int descriptor)
    {
        struct stat status { };
        fstat(descriptor, &status);
        if (S_ISDIR(status.st_mode)) {
            settleNames(pathOf(descriptor));
            return;
        }
        std::erase_if(
            m_undo, [&](const Undo& undo) { return undo.kind == Undo::Bytes && undo.inode == status.st_ino; });
    }

    void allSynced() { m_undo.clear(); }

    /// A name for a file that is to be removed, outside of the watched folder and on the same disk.
    std::string keptName() { return m_root + ".kept" + std::to_string(++m_kept); }

    std::recursive_mutex mutex;

private:
    void settleNames(const std::string& folder)
    {
        std::vector<std::string> settled;
        std::erase_if(m_undo, [&](const Undo& undo) {
            if (undo.kind == Undo::Bytes || parentOf(undo.path) != folder)
                return false;
            if (undo.kind == Undo::Rename)
                settled.push_back(undo.otherPath);
            return true;
        });
        for (const std::string& former : settled)
            std::erase_if(m_undo, [&](const Undo& undo) { return undo.kind == Undo::NewName && undo.path == former; });
    }

    /// A descriptor of the shim's own, which stays open: closing one would drop the database's locks.
    int ownDescriptor(ino_t inode, const std::string& path)
    {
        const auto known = m_descriptors.find(inode);
        if (known != m_descriptors.end())
            return known->second;
        return m_descriptors[inode] = next<int(const char*, int, ...)>("open")(path.c_str(), O_RDWR | O_CLOEXEC);
    }

    void undoAll()
    {
        for (auto undo = m_undo.rbegin(); undo != m_undo.rend(); ++undo) {
            if (m_chance && (*m_chance)() % 2 == 0)
                continue;
            switch (undo->kind) {
            case Undo::Bytes: {
                const int descriptor = m_descriptors[undo->inode];
                next<ssize_t(int, const void*, size_t, off_t)>("pwrite")(
                    descriptor, undo->bytes.data(), undo->bytes.size(), undo->offset);
                next<int(int, off_t)>("ftruncate")(descriptor, undo->size);
                break;
            }
            case Undo::NewName:
                next<int(const char*)>("unlink")(undo->path.c_str());
                break;
            case Undo::Rename:
                next<int(const char*, const char*)>("rename")(undo->path.c_str(), undo->otherPath.c_str());
                break;
            case Undo::Removal:
                next<int(const char*, const char*)>("rename")(undo->otherPath.c_str(), undo->path.c_str());
                break;
            case Undo::NewFolder:
                rmdir(undo->path.c_str());
                break;
            }
        }
    }

    std::string m_root;
    bool m_counts = false, m_losesPower = false;
    long m_points = 0, m_lastPoint = -1;
    int m_kept = 0;
    std::optional<long> m_bytesLeft;
    std::optional<std::minstd_rand> m_chance; ///< decides which steps are gone
    std::deque<Undo> m_undo;
    std::map<ino_t, int> m_descriptors;
};

Shim& shim()
{
    static Shim instance;
    return instance;
}

using Lock = std::lock_guard<std::recursive_mutex>;

/// A write at `offset` by `perform(count)`, which writes the first `count` bytes.
template <class Perform> ssize_t writeThrough(int descriptor, off_t offset, std::size_t count, Perform perform)
{
    const Lock lock(shim().mutex);
    const std::string path = pathOf(descriptor);
    if (!shim().watches(path))
        return perform(count);
    shim().noteBytes(descriptor, path, offset, count);
    if (shim().isLastPoint()) {
        perform(count / 2);
        shim().die();
    }
    const std::size_t fits = shim().fitting(count);
    if (fits == 0 && count > 0) {
        errno = ENOSPC;
        return -1;
    }
    return perform(fits);
}

int openThrough(const char* name, const char* path, int flags, mode_t mode)
{
    const auto real = next<int(const char*, int, ...)>(name);
    const Lock lock(shim().mutex);
    struct stat status { };
    const bool isNew = (flags & O_CREAT) && shim().watches(path) && stat(path, &status) != 0;
    if (isNew)
        shim().point();
    const int descriptor = real(path, flags, mode);
    if (isNew && descriptor >= 0)
        shim().note({Undo::NewName, 0, path, {}, 0, 0, {}});
    return descriptor;
}

int syncThrough(const char* name, int descriptor)
{
    const Lock lock(shim().mutex);
    const bool watched = shim().watches(pathOf(descriptor));
    if (watched)
        shim().point();
    const int result = next<int(int)>(name)(descriptor);
    if (watched && result == 0)
        shim().synced(descriptor);
    return result;
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openThrough("open", path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openThrough("open64", path, flags, mode);
}

ssize_t write(int descriptor, const void* bytes, size_t count)
{
    return writeThrough(descriptor, lseek(descriptor, 0, SEEK_CUR), count,
        [&](std::size_t n) { return next<ssize_t(int, const void*, size_t)>("write")(descriptor, bytes, n); });
}

ssize_t pwrite(int descriptor, const void* bytes, size_t count, off_t offset)
{
    return writeThrough(descriptor, offset, count, [&](std::size_t n) {
        return next<ssize_t(int, const void*, size_t, off_t)>("pwrite")(descriptor, bytes, n, offset);
    });
}

ssize_t pwrite64(int descriptor, const void* bytes, size_t count, off64_t offset)
{
    return pwrite(descriptor, bytes, count, offset);
}

int fsync(int descriptor) { return syncThrough("fsync", descriptor); }
int fdatasync(int descriptor) { return syncThrough("fdatasync", descriptor); }

int syncfs(int descriptor) noexcept
{
    const Lock lock(shim().mutex);
    const bool watched = shim().watches(pathOf(descriptor));
    if (watched)
        shim().point();
    const int result = next<int(int)>("syncfs")(descriptor);
    if (watched && result == 0)
        shim().allSynced();
    return result;
}

int ftruncate(int descriptor, off_t size) noexcept
{
    const Lock lock(shim().mutex);
    const std::string path = pathOf(descriptor);
    struct stat status { };
    if (shim().watches(path) && fstat(descriptor, &status) == 0) {
        shim().noteBytes(
            descriptor, path, size, status.st_size > size ? static_cast<std::size_t>(status.st_size - size) : 0);
        shim().point();
    }
    return next<int(int, off_t)>("ftruncate")(descriptor, size);
}

int ftruncate64(int descriptor, off64_t size) noexcept { return ftruncate(descriptor, size); }

int rename(const char* from, const char* to) noexcept
{
    const Lock lock(shim().mutex);
    if (!shim().watches(to))
        return next<int(const char*, const char*)>("rename")(from, to);
    shim().point();
    const int result = next<int(const char*, const char*)>("rename")(from, to);
    if (result == 0)
        shim().note({Undo::Rename, 0, to, from, 0, 0, {}});
    return result;
}

int unlink(const char* path) noexcept
{
    const Lock lock(shim().mutex);
    if (!shim().watches(path))
        return next<int(const char*)>("unlink")(path);
    shim().point();
    const std::string kept = shim().keptName();
    if (shim().losesPower() && link(path, kept.c_str()) == 0)
        shim().note({Undo::Removal, 0, path, kept, 0, 0, {}});
    return next<int(const char*)>("unlink")(path);
}

int mkdir(const char* path, mode_t mode) noexcept
{
    const Lock lock(shim().mutex);
    if (!shim().watches(path))
        return next<int(const char*, mode_t)>("mkdir")(path, mode);
    shim().point();
    const int result = next<int(const char*, mode_t)>("mkdir")(path, mode);
    if (result == 0)
        shim().note({Undo::NewFolder, 0, path, {}, 0, 0, {}});
    return result;
}

} // extern "C"
