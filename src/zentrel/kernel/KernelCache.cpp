#include "zentrel/kernel/KernelCache.h"

#include "contracts/documents/DocumentError.h"
#include "platform/ContentCache.h"
#include "platform/FileDescriptor.h"
#include "platform/Sha256.h"
#include "zentrel/kernel/KernelLimits.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <vector>

namespace zn::zentrel {

namespace {

/// Beyond what any file takes that another process reads.
constexpr std::chrono::minutes longestWait{10};

std::unique_ptr<zn::ContentCache> cache;
std::function<void(const std::string&)> tellFailure;

/// A process of the kernel's may be in any state.
bool isUsable() { return cache && !isKernelProcess(); }

/// Stands for the version of everything that is linked into it.
const std::string& programMark()
{
    static const std::string mark = [] {
        struct stat facts { };
        ::stat("/proc/self/exe", &facts);
        return std::to_string(facts.st_size) + "/" + std::to_string(facts.st_mtim.tv_sec) + "."
            + std::to_string(facts.st_mtim.tv_nsec);
    }();
    return mark;
}

/// None if it can't be read, of which the reader will tell.
std::optional<std::string> hashOf(const std::filesystem::path& path)
{
    const zn::FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat facts { };
    if (!file || ::fstat(file.number(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return {};
    zn::Sha256 hash;
    std::vector<char> block(std::size_t{1} << 16);
    for (;;) {
        const ssize_t got = ::read(file.number(), block.data(), block.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return {};
        if (got == 0)
            return hash.finish();
        hash.update({block.data(), static_cast<std::size_t>(got)});
    }
}

/// Waits while another process makes the same, which its limit of computing ends. None if it is stuck all the same:
/// making it twice costs time only.
std::optional<zn::ContentCache::Turn> turnFor(const std::string& name)
{
    const auto latest = std::chrono::steady_clock::now() + longestWait;
    for (;;) {
        if (auto turn = cache->takeTurn(name))
            return turn;
        if (std::chrono::steady_clock::now() > latest)
            return std::nullopt;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        if (kernelLimits().userGone && kernelLimits().userGone())
            throw DocumentError(ErrorKind::Kernel, "Nobody waits any more for what another process is reading.");
    }
}

void keep(const std::string& name, std::string_view bytes)
{
    try {
        cache->keep(name, bytes);
    } catch (const std::system_error& error) {
        if (tellFailure)
            tellFailure("Nothing more is kept in the cache '" + cache->folder().string()
                + "': " + error.code().message() + ".");
        cache.reset();
    }
}

} // namespace

void setKernelCache(std::unique_ptr<zn::ContentCache> wanted, std::function<void(const std::string&)> told)
{
    cache = std::move(wanted);
    tellFailure = std::move(told);
}

std::string kernelResultName(std::string_view maker, std::initializer_list<std::string_view> madeFrom)
{
    zn::Sha256 hash;
    const auto add = [&](std::string_view bytes) {
        const std::string head = std::to_string(bytes.size()) + ":";
        hash.update(head);
        hash.update(bytes);
    };
    add(maker);
    add(programMark());
    for (const std::string_view bytes : madeFrom)
        add(bytes);
    return hash.finish();
}

std::string keptResult(const std::string& name, const std::function<MadeResult()>& make)
{
    if (!isUsable())
        return make().bytes;
    if (auto kept = cache->find(name))
        return *std::move(kept);
    const auto turn = turnFor(name);
    if (auto kept = cache->find(name))
        return *std::move(kept);
    MadeResult made = make();
    if (made.mayBeKept)
        keep(name, made.bytes);
    return std::move(made.bytes);
}

std::string keptOfFile(
    const std::filesystem::path& file, std::string_view maker, const std::function<MadeResult()>& make)
{
    const auto content = isUsable() ? hashOf(file) : std::nullopt;
    if (!content)
        return make().bytes;
    return keptResult(kernelResultName(maker, {*content}), [&] {
        MadeResult made = make();
        // Whoever replaces the file between the two readings would leave a wrong result for good.
        made.mayBeKept = made.mayBeKept && hashOf(file) == content;
        return made;
    });
}

} // namespace zn::zentrel
