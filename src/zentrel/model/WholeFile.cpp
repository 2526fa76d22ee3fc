#include "zentrel/model/WholeFile.h"

#include "contracts/documents/DocumentError.h"

#include <cerrno>
#include <cstring>
#include <system_error>

namespace zn::zentrel {

namespace {

void requireReplaceable(const std::filesystem::path& target)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(target, ignored))
        raiseNotWritable(target, EISDIR);
    // A read-only file says that nobody may replace it, which a rename alone would not respect.
    if (access(target.c_str(), F_OK) == 0 && access(target.c_str(), W_OK) != 0)
        raiseNotWritable(target, errno);
}

} // namespace

void raiseNotWritable(const std::filesystem::path& target, int number)
{
    throw DocumentError(
        ErrorKind::NotWritable, "The file " + quoted(target) + " can't be written: " + std::strerror(number) + ".");
}

void writeWhole(const std::filesystem::path& target, zn::AtomicFile::Sync sync,
    const std::function<void(zn::AtomicFile& file)>& write)
{
    requireReplaceable(target);
    try {
        zn::AtomicFile file(target);
        write(file);
        file.commit(sync);
    } catch (const std::system_error& error) {
        raiseNotWritable(target, error.code().value());
    }
}

void writeWhole(const std::filesystem::path& target, std::string_view bytes)
{
    writeWhole(target, zn::AtomicFile::Sync::No, [&](zn::AtomicFile& file) { file.write(bytes); });
}

} // namespace zn::zentrel
