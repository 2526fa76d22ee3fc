#include "contracts/documents/ArchiveReader.h"

#include "contracts/documents/DocumentError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <zip.h>

namespace zn {

namespace {

constexpr std::uintmax_t largestContent = std::uintmax_t{4} << 30;
/// No more bytes than that come out of one byte of an archive.
constexpr std::uintmax_t bestCompression = 1032;

[[noreturn]] void raiseDamaged(const std::filesystem::path& file, const std::string& what)
{
    throw DocumentError(ErrorKind::Damaged, "The file " + quoted(file) + " is damaged: " + what + ".");
}

/// The size of a file that can be read. `shown` is how sentences name it.
std::uintmax_t readableSize(const std::filesystem::path& file, const std::filesystem::path& shown)
{
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status))
        throw DocumentError(ErrorKind::NotFound, "The file " + quoted(shown) + " isn't there.");
    if (!std::filesystem::is_regular_file(status))
        throw DocumentError(ErrorKind::NotReadable, quoted(shown) + " isn't a file.");
    if (access(file.c_str(), R_OK) != 0)
        throw DocumentError(
            ErrorKind::NotReadable, "The file " + quoted(shown) + " can't be read: " + std::strerror(errno) + ".");
    const auto size = std::filesystem::file_size(file, error);
    if (size == 0)
        throw DocumentError(ErrorKind::Damaged, "The file " + quoted(shown) + " is empty.");
    return size;
}

} // namespace

ArchiveReader::ArchiveReader(const std::filesystem::path& file, std::filesystem::path shown)
    : m_shown(std::move(shown))
    , m_size(readableSize(file, m_shown))
{
    int number = 0;
    m_zip = zip_open(file.c_str(), ZIP_RDONLY, &number);
    if (!m_zip)
        throw DocumentError(ErrorKind::Damaged,
            "The file " + quoted(m_shown)
                + " is no document of this program: it is truncated or holds something else.");
}

ArchiveReader::~ArchiveReader() { zip_discard(m_zip); }

std::string ArchiveReader::entry(const std::string& name, std::uintmax_t largest)
{
    zip_stat_t status;
    if (zip_stat(m_zip, name.c_str(), 0, &status) != 0)
        raiseDamaged(m_shown, "its part '" + name + "' is missing");
    const std::uintmax_t left = std::min(largestContent, bestCompression * m_size) - m_read;
    if (status.size > std::min(largest, left))
        raiseDamaged(m_shown, "its part '" + name + "' has an impossible size");
    m_read += status.size;
    zip_file_t* stream = zip_fopen_index(m_zip, status.index, 0);
    if (!stream)
        raiseDamaged(m_shown, "its part '" + name + "' can't be read");
    std::string content(status.size, '\0');
    const zip_int64_t count = zip_fread(stream, content.data(), status.size);
    // The checksum is verified only by a read that reaches the end.
    char beyond = 0;
    const zip_int64_t rest = zip_fread(stream, &beyond, 1);
    zip_fclose(stream);
    if (count != static_cast<zip_int64_t>(status.size) || rest != 0)
        raiseDamaged(m_shown, "its part '" + name + "' can't be read whole");
    return content;
}

} // namespace zn
