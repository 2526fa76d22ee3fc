#include "platform/linux/FileVersion.h"

#include "platform/FileDescriptor.h"
#include "platform/FileVersionBlock.h"

#include <cstring>
#include <elf.h>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace zn {

namespace {

constexpr std::size_t largestNameTable = 1 << 20;

bool readAt(int file, std::uint64_t offset, void* target, std::size_t size)
{
    return ::pread(file, target, size, static_cast<off_t>(offset)) == static_cast<ssize_t>(size);
}

template <class Record> bool readAt(int file, std::uint64_t offset, Record& record)
{
    return readAt(file, offset, &record, sizeof record);
}

bool isReadable(const Elf64_Ehdr& header)
{
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 && header.e_ident[EI_CLASS] == ELFCLASS64
        && header.e_ident[EI_DATA] == ELFDATA2LSB && header.e_shentsize == sizeof(Elf64_Shdr)
        && header.e_shstrndx < header.e_shnum;
}

std::optional<Elf64_Shdr> findSection(int file, const Elf64_Ehdr& header)
{
    std::vector<Elf64_Shdr> sections(header.e_shnum);
    if (!readAt(file, header.e_shoff, sections.data(), sections.size() * sizeof(Elf64_Shdr)))
        return std::nullopt;
    const Elf64_Shdr& nameTable = sections[header.e_shstrndx];
    if (nameTable.sh_size > largestNameTable)
        return std::nullopt;
    std::vector<char> names(nameTable.sh_size + 1, '\0');
    if (!readAt(file, nameTable.sh_offset, names.data(), nameTable.sh_size))
        return std::nullopt;
    for (const Elf64_Shdr& section : sections)
        if (section.sh_name < nameTable.sh_size && std::strcmp(names.data() + section.sh_name, fileVersionSection) == 0)
            return section;
    return std::nullopt;
}

} // namespace

std::optional<FileVersion> readFileVersion(const std::filesystem::path& path)
{
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    Elf64_Ehdr header{};
    if (!file || !readAt(file.number(), 0, header) || !isReadable(header))
        return std::nullopt;
    const auto section = findSection(file.number(), header);
    FileVersionBlock block{};
    if (!section || section->sh_size < sizeof block || !readAt(file.number(), section->sh_offset, block))
        return std::nullopt;
    if (std::memcmp(block.marker, fileVersionMarker, sizeof fileVersionMarker) != 0)
        return std::nullopt;
    return FileVersion{block.major, block.minor};
}

} // namespace zn
