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
    explicit ArchiveReader(const std::filesystem::path& file)
        : ArchiveReader(file, file)
    {
    }
    /// `shown` is how sentences name the file.
    ArchiveReader(const std::filesystem::path& file, std::filesystem::path shown);
    ArchiveReader(const ArchiveReader&) = delete;
    ArchiveReader& operator=(const ArchiveReader&) = delete;
    ~ArchiveReader();

    /// A whole entry, its checksum verified.
    std::string entry(const std::string& name) const;

    /// As sentences name it.
    const std::filesystem::path& file() const { return m_shown; }

private:
    std::filesystem::path m_shown;
    std::uintmax_t m_size = 0;
    zip* m_zip = nullptr;
};

} // namespace zn
