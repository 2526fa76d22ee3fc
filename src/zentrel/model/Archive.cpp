#include "zentrel/model/Archive.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/model/WholeFile.h"

#include <cerrno>
#include <zip.h>

namespace zn::zentrel {

namespace {

/// 1 January 2018: a moment of its own in each file would make equal documents differ.
constexpr time_t entryTime = 1514764800;
/// Geometry shrinks to less than half at the fastest level; the slower ones gain a few percent for five times the time.
constexpr zip_uint32_t compressionLevel = 1;

void addEntry(zip* archive, const std::string& name, const std::string& content, const std::filesystem::path& target)
{
    zip_source_t* source = zip_source_buffer(archive, content.data(), content.size(), 0);
    const zip_int64_t added = source ? zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (added < 0) {
        if (source)
            zip_source_free(source);
        throw DocumentError(
            ErrorKind::NotWritable, "The file " + quoted(target) + " can't be written: " + zip_strerror(archive) + ".");
    }
    const auto index = static_cast<zip_uint64_t>(added);
    zip_set_file_compression(archive, index, ZIP_CM_DEFLATE, compressionLevel);
    zip_file_set_mtime(archive, index, entryTime, 0);
}

} // namespace

void writeArchive(const std::map<std::string, std::string>& entries, const std::filesystem::path& target)
{
    writeWhole(target, zn::AtomicFile::Sync::Yes, [&](zn::AtomicFile& file) {
        int number = 0;
        zip* archive = zip_open(file.temporary().c_str(), ZIP_CREATE | ZIP_TRUNCATE, &number);
        if (!archive)
            raiseNotWritable(target, errno);
        try {
            for (const auto& [name, content] : entries)
                addEntry(archive, name, content, target);
        } catch (...) {
            zip_discard(archive);
            throw;
        }
        if (zip_close(archive) != 0) {
            const std::string reason = zip_strerror(archive);
            zip_discard(archive);
            throw DocumentError(
                ErrorKind::NotWritable, "The file " + quoted(target) + " can't be written: " + reason + ".");
        }
    });
}

} // namespace zn::zentrel
