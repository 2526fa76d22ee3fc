#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

struct zip;

namespace zn {

/// The entry of a document that says everything but geometry; docs/documents.md tells its members.
inline constexpr const char* manifestEntry = "manifest.json";

/// The zip archive below our documents, read. Every failure is `Damaged`, `NotFound` or `NotReadable` with a sentence
/// that names the file.
class ArchiveReader {
public:
    /// A document's entry is a few hundred megabytes at most; a larger one is a damaged or hostile size field.
    static constexpr std::uintmax_t largestEntry = std::uintmax_t{2} << 30;

    explicit ArchiveReader(const std::filesystem::path& file)
        : ArchiveReader(file, file)
    {
    }
    /// `shown` is how sentences name the file.
    ArchiveReader(const std::filesystem::path& file, std::filesystem::path shown);
    ArchiveReader(const ArchiveReader&) = delete;
    ArchiveReader& operator=(const ArchiveReader&) = delete;
    ~ArchiveReader();

    /// A whole entry of at most that size, its checksum verified. All entries together have at most 4 GB, and no more
    /// than the archive can hold: whoever reads one again and again finds the file damaged.
    std::string entry(const std::string& name, std::uintmax_t largest = largestEntry);

    /// As sentences name it.
    const std::filesystem::path& file() const { return m_shown; }

private:
    std::filesystem::path m_shown;
    std::uintmax_t m_size = 0;
    std::uintmax_t m_read = 0; ///< bytes of entries so far
    zip* m_zip = nullptr;
};

} // namespace zn
