// Preloaded into a program whose calls to the system are to fail. Counts the calls that reach a file below the folder
// FAIL_ROOT (openings, reads, writes, syncs, renames, removals, new folders, changed modes and lengths) and lets one
// fail, by the variable FAIL_AT:
//
//   count:0:ERROR     nothing fails; writes the number of calls that could to standard error at the end
//   once:N:ERROR      call N fails with the system's error number ERROR
//   forever:N:ERROR   likewise, and with it each later call that could: with ENOSPC those that take room on the disk
//
// Only the program that FAIL_PROGRAM names is disturbed, not what it starts. The shared memory of the database, which
// is no file to lose, is left alone.

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

template <class Function> Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

enum class Room { Takes, None }; ///< whether a call may find the disk full

class Shim {
public:
    Shim()
    {
        const char* root = std::getenv("FAIL_ROOT");
        const char* at = std::getenv("FAIL_AT");
        const char* program = std::getenv("FAIL_PROGRAM");
        if (!root || !at || !program || std::strcmp(program, program_invocation_short_name) != 0)
            return;
        m_root = root;
        m_counts = std::strncmp(at, "count:", 6) == 0;
        m_forever = std::strncmp(at, "forever:", 8) == 0;
        char* rest = nullptr;
        m_call = std::strtol(std::strchr(at, ':') + 1, &rest, 10);
        m_error = *rest == ':' ? static_cast<int>(std::strtol(rest + 1, nullptr, 10)) : m_error;
    }

    ~Shim()
    {
        if (m_counts)
            std::fprintf(stderr, "%ld\n", m_calls.load());
    }

    /// True, with `errno` set, when this call is to fail.
    bool fails(const char* path, Room room)
    {
        if (m_root.empty() || std::strncmp(path, m_root.c_str(), m_root.size()) != 0 || std::strstr(path, "-shm"))
            return false;
        if (m_error == ENOSPC && room == Room::None)
            return false;
        const long call = ++m_calls;
        if (m_counts || (m_forever ? call < m_call : call != m_call))
            return false;
        errno = m_error;
        return true;
    }

    bool fails(int descriptor, Room room)
    {
        if (m_root.empty())
            return false;
        const int before = errno;
        char buffer[4096];
        const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
        const ssize_t length = readlink(link.c_str(), buffer, sizeof buffer - 1);
        errno = before;
        if (length <= 0)
            return false;
        buffer[length] = '\0';
        return fails(buffer, room);
    }

private:
    std::string m_root;
    bool m_counts = false, m_forever = false;
    long m_call = -1;
    int m_error = 0;
    std::atomic<long> m_calls = 0;
};

Shim& shim()
{
    static Shim instance;
    return instance;
}

int openThrough(const char* name, const char* path, int flags, mode_t mode)
{
    if (shim().fails(path, (flags & O_CREAT) ? Room::Takes : Room::None))
        return -1;
    return next<int(const char*, int, ...)>(name)(path, flags, mode);
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

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments have theirs
#define ZN_DISTURBED(room, Result, name, parameters, first, arguments)                                                 \
    Result name parameters                                                                                             \
    {                                                                                                                  \
        if (shim().fails(first, Room::room))                                                                           \
            return -1;                                                                                                 \
        return next<Result parameters>(#name) arguments;                                                               \
    }
// NOLINTEND(bugprone-macro-parentheses)

ZN_DISTURBED(None, ssize_t, read, (int descriptor, void* bytes, size_t count), descriptor, (descriptor, bytes, count))
ZN_DISTURBED(None, ssize_t, pread, (int descriptor, void* bytes, size_t count, off_t offset), descriptor,
    (descriptor, bytes, count, offset))
ZN_DISTURBED(None, ssize_t, pread64, (int descriptor, void* bytes, size_t count, off64_t offset), descriptor,
    (descriptor, bytes, count, offset))
ZN_DISTURBED(
    Takes, ssize_t, write, (int descriptor, const void* bytes, size_t count), descriptor, (descriptor, bytes, count))
ZN_DISTURBED(Takes, ssize_t, pwrite, (int descriptor, const void* bytes, size_t count, off_t offset), descriptor,
    (descriptor, bytes, count, offset))
ZN_DISTURBED(Takes, ssize_t, pwrite64, (int descriptor, const void* bytes, size_t count, off64_t offset), descriptor,
    (descriptor, bytes, count, offset))
ZN_DISTURBED(Takes, int, fsync, (int descriptor), descriptor, (descriptor))
ZN_DISTURBED(Takes, int, fdatasync, (int descriptor), descriptor, (descriptor))
ZN_DISTURBED(Takes, int, syncfs, (int descriptor) noexcept, descriptor, (descriptor))
ZN_DISTURBED(Takes, int, ftruncate, (int descriptor, off_t size) noexcept, descriptor, (descriptor, size))
ZN_DISTURBED(Takes, int, ftruncate64, (int descriptor, off64_t size) noexcept, descriptor, (descriptor, size))
ZN_DISTURBED(None, int, fchmod, (int descriptor, mode_t mode) noexcept, descriptor, (descriptor, mode))
ZN_DISTURBED(Takes, int, rename, (const char* from, const char* to) noexcept, to, (from, to))
ZN_DISTURBED(None, int, unlink, (const char* path) noexcept, path, (path))
ZN_DISTURBED(Takes, int, mkdir, (const char* path, mode_t mode) noexcept, path, (path, mode))
ZN_DISTURBED(None, int, chmod, (const char* path, mode_t mode) noexcept, path, (path, mode))

} // extern "C"
