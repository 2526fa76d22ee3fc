#pragma once

#include "zentrel/kernel/KernelChild.h"

#include <initializer_list>
#include <memory>
#include <optional>

namespace zn {
class ContentCache;
}

namespace zn::zentrel {

/// Where results of the kernel are kept for whoever asks the same again. Set by whoever puts the program together,
/// before the first call; without one nothing is kept. Only the program itself reads and writes it, never a process of
/// the kernel's. `told` takes a sentence about the first failure, after which this program keeps nothing more.
void setKernelCache(std::unique_ptr<zn::ContentCache> cache, std::function<void(const std::string&)> told);

/// The name of a result: the SHA-256 of what made it (`maker`, which changes with its version and settings), of this
/// program's file, since another build may make other results, and of all that it was made from.
std::string kernelResultName(std::string_view maker, std::initializer_list<std::string_view> madeFrom);

struct MadeResult {
    std::string bytes;
    bool mayBeKept = true; ///< no failure, and nothing had a part in it that its name doesn't tell
};

/// What is kept under a name, or else what `make` makes. Who asks while another process makes it waits for that.
std::string keptResult(const std::string& name, const std::function<MadeResult()>& make);

/// What `make` makes of a file, or what it made of the same bytes before. It isn't kept when the file changes
/// meanwhile.
std::string keptOfFile(
    const std::filesystem::path& file, std::string_view maker, const std::function<MadeResult()>& make);

} // namespace zn::zentrel
