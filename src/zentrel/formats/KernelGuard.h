#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

/// Two ways to call the geometry kernel so that its fault costs one file and not the program.
///
/// Reading foreign files, projecting hidden lines and writing exchange formats takes tens of milliseconds and more and
/// is where the kernel fails most, so it runs in a child process: whatever happens there, the program's memory is
/// untouched. A child costs 2 to 15 milliseconds. Meshing a small part takes less, so a part whose
/// geometry was found sound is meshed in the program, and a crash is caught where it happens.
namespace zn::zentrel {

/// How long work on that many pieces (faces, or 20 kB of a file) may compute: far above what any honest file takes, so
/// that only a loop without end meets it.
constexpr std::chrono::seconds computingLimit(std::size_t pieces) { return std::chrono::seconds(60 + pieces); }

/// Runs `work` in a child process (a copy of this one) and returns the bytes that it returns. A `DocumentError` that it
/// raises is raised here again. The kernel's exceptions, a crash, more memory than half of the machine's and `limit` of
/// computing become `DocumentError` of kind `Kernel`: "The geometry kernel … while <doing> the file '…'." What `work`
/// changes in memory is lost. `doing` is such as "reading".
std::string runInChild(const std::string& doing, const std::filesystem::path& file,
    const std::function<std::string()>& work, std::chrono::seconds limit);

/// Runs `work` in this process, with the same errors; a crash by a memory or arithmetic fault ends `work` at once,
/// without its destructors: what it held is leaked, so it must hold no lock and no file.
void runGuarded(const std::string& doing, const std::filesystem::path& file, const std::function<void()>& work);

} // namespace zn::zentrel
