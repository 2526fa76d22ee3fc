#include "platform/KernelConfinement.h"

#include "platform/FileDescriptor.h"

#include <cstdint>
#include <exception>
#include <fcntl.h>
#include <linux/landlock.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>

namespace zn {

namespace {

// Headers may be older than the kernel.
constexpr std::uint64_t truncateRight = 1ULL << 14;
constexpr int versionWithRefer = 2;
constexpr int versionWithTruncate = 3;

/// What changes files and folders, whatever the version.
constexpr std::uint64_t changingRights = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR
    | LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR
    | LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO
    | LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM;

/// A macro's calls nest 3 MB deep, and the geometry kernel comes on top.
constexpr std::size_t stackBytes = 16U << 20;

std::uint64_t rightsOf(int version)
{
    return changingRights | (version >= versionWithRefer ? LANDLOCK_ACCESS_FS_REFER : 0)
        | (version >= versionWithTruncate ? truncateRight : 0);
}

bool allow(int ruleset, const std::filesystem::path& place, std::uint64_t rights)
{
    const FileDescriptor opened(::open(place.c_str(), O_PATH | O_CLOEXEC));
    struct stat facts { };
    if (!opened || fstat(opened.number(), &facts) != 0)
        return true; // nothing is there, so there is nothing to allow
    if (!S_ISDIR(facts.st_mode))
        rights &= LANDLOCK_ACCESS_FS_WRITE_FILE | truncateRight;
    const landlock_path_beneath_attr rule{.allowed_access = rights, .parent_fd = opened.number()};
    return syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == 0;
}

/// None if the kernel takes no such rules.
FileDescriptor rulesFor(const std::vector<std::filesystem::path>& folders)
{
    const int version = kernelConfinementVersion();
    if (version < 1)
        return {};
    const std::uint64_t rights = rightsOf(version);
    const landlock_ruleset_attr attributes{.handled_access_fs = rights | LANDLOCK_ACCESS_FS_EXECUTE};
    FileDescriptor ruleset(static_cast<int>(syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0)));
    for (const auto& folder : folders) {
        if (ruleset && !allow(ruleset.number(), folder, rights))
            return {};
    }
    return ruleset;
}

bool restrictTo(const FileDescriptor& ruleset)
{
    // Both bind this thread alone, and what it starts.
    return ruleset && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0
        && syscall(SYS_landlock_restrict_self, ruleset.number(), 0) == 0;
}

struct Job {
    const FileDescriptor& ruleset;
    const std::function<void()>& work;
    bool confined = false;
    std::exception_ptr failure = nullptr;
};

void* runJob(void* argument)
{
    Job& job = *static_cast<Job*>(argument);
    job.confined = restrictTo(job.ruleset);
    try {
        if (job.confined)
            job.work();
    } catch (...) {
        job.failure = std::current_exception();
    }
    return nullptr;
}

/// False if the thread can't be had.
bool runOnThread(Job& job)
{
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0)
        return false;
    pthread_attr_setstacksize(&attributes, stackBytes);
    pthread_t thread{};
    const bool started = pthread_create(&thread, &attributes, runJob, &job) == 0;
    pthread_attr_destroy(&attributes);
    if (started)
        pthread_join(thread, nullptr);
    return started;
}

} // namespace

int kernelConfinementVersion()
{
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    return version > 0 ? static_cast<int>(version) : 0;
}

bool confineWritesOfThisThread(const std::vector<std::filesystem::path>& folders)
{
    return restrictTo(rulesFor(folders));
}

bool runWithWritesConfined(const std::vector<std::filesystem::path>& folders, const std::function<void()>& work)
{
    const FileDescriptor ruleset = rulesFor(folders);
    Job job{.ruleset = ruleset, .work = work};
    if (!ruleset || !runOnThread(job) || !job.confined) {
        work();
        return false;
    }
    if (job.failure)
        std::rethrow_exception(job.failure);
    return true;
}

} // namespace zn
