#pragma once

#include <filesystem>
#include <map>
#include <string>

struct zip;

namespace zn::zentrel {

/// The zip archive below our documents, read. Every failure is `Damaged`, `NotFound` or `NotReadable` with a sentence
/// that names the file.
class ArchiveReader {
public:
    explicit ArchiveReader(std::filesystem::path file);
    ArchiveReader(const ArchiveReader&) = delete;
    ArchiveReader& operator=(const ArchiveReader&) = delete;
    ~ArchiveReader();

    /// A whole entry, its checksum verified.
    std::string entry(const std::string& name) const;

    const std::filesystem::path& file() const { return m_file; }

private:
    std::filesystem::path m_file;
    zip* m_zip = nullptr;
};

/// Writes entries (name to content) as a zip archive that takes the target's place whole. The same entries give the
/// same bytes. Raises `NotWritable`.
void writeArchive(const std::map<std::string, std::string>& entries, const std::filesystem::path& target);

} // namespace zn::zentrel
