#include "zentrel/model/Archive.h"

#include "zentrel/model/DocumentError.h"
#include "zentrel/model/WholeFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <zip.h>

namespace zn::zentrel {

namespace {

/// A document's entry is a few hundred megabytes at most; a larger one is a damaged or hostile size field.
constexpr zip_uint64_t largestEntry = zip_uint64_t{2} << 30;
/// No more bytes than that come out of one byte of an archive.
constexpr zip_uint64_t bestCompression = 1032;
/// 1 January 2018: a moment of its own in each file would make equal documents differ.
constexpr time_t entryTime = 1514764800;
/// Geometry shrinks to less than half at the fastest level; the slower ones gain a few percent for five times the time.
constexpr zip_uint32_t compressionLevel = 1;

[[noreturn]] void raiseDamaged(const std::filesystem::path& file, const std::string& what)
{
    throw DocumentError(ErrorKind::Damaged, "The file " + quoted(file) + " is damaged: " + what + ".");
}

void checkReadable(const std::filesystem::path& file)
{
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status))
        throw DocumentError(ErrorKind::NotFound, "The file " + quoted(file) + " isn't there.");
    if (!std::filesystem::is_regular_file(status))
        throw DocumentError(ErrorKind::NotReadable, quoted(file) + " isn't a file.");
    if (access(file.c_str(), R_OK) != 0)
        throw DocumentError(
            ErrorKind::NotReadable, "The file " + quoted(file) + " can't be read: " + std::strerror(errno) + ".");
    if (std::filesystem::file_size(file, error) == 0)
        throw DocumentError(ErrorKind::Damaged, "The file " + quoted(file) + " is empty.");
}

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

ArchiveReader::ArchiveReader(std::filesystem::path file)
    : m_file(std::move(file))
{
    checkReadable(m_file);
    int number = 0;
    m_zip = zip_open(m_file.c_str(), ZIP_RDONLY, &number);
    if (!m_zip)
        throw DocumentError(ErrorKind::Damaged,
            "The file " + quoted(m_file) + " is no document of this program: it is truncated or holds something else.");
}

ArchiveReader::~ArchiveReader() { zip_discard(m_zip); }

std::string ArchiveReader::entry(const std::string& name) const
{
    zip_stat_t status;
    if (zip_stat(m_zip, name.c_str(), 0, &status) != 0)
        raiseDamaged(m_file, "its part '" + name + "' is missing");
    if (status.size > std::min(largestEntry, bestCompression * std::filesystem::file_size(m_file)))
        raiseDamaged(m_file, "its part '" + name + "' has an impossible size");
    zip_file_t* stream = zip_fopen_index(m_zip, status.index, 0);
    if (!stream)
        raiseDamaged(m_file, "its part '" + name + "' can't be read");
    std::string content(status.size, '\0');
    const zip_int64_t count = zip_fread(stream, content.data(), status.size);
    // The checksum is verified only by a read that reaches the end.
    char beyond = 0;
    const zip_int64_t rest = zip_fread(stream, &beyond, 1);
    zip_fclose(stream);
    if (count != static_cast<zip_int64_t>(status.size) || rest != 0)
        raiseDamaged(m_file, "its part '" + name + "' can't be read whole");
    return content;
}

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
