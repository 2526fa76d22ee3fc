#include "tests/language/DiskFiles.h"

#include "base/Dates.h"
#include "base/Paths.h"

#include <algorithm>
#include <fstream>

namespace zn::test {

namespace fs = std::filesystem;
using namespace language;

namespace {

class DiskFile : public OpenedFile {
public:
    DiskFile(const fs::path& path, std::ios::openmode mode)
        : m_stream(path, mode | std::ios::binary)
        , m_path(path)
    {
    }

    bool isOpen() const { return m_stream.is_open(); }
    std::size_t read(char* buffer, std::size_t count) override
    {
        m_stream.read(buffer, static_cast<std::streamsize>(count));
        const auto got = static_cast<std::size_t>(m_stream.gcount());
        m_stream.clear();
        return got;
    }
    void write(std::string_view bytes) override
    {
        if (!m_stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size())))
            throw StatusError(deviceFull);
    }
    void seek(std::uint64_t position) override { m_stream.seekg(static_cast<std::streamoff>(position)); }
    std::uint64_t position() override { return static_cast<std::uint64_t>(m_stream.tellg()); }
    std::uint64_t size() override
    {
        m_stream.flush();
        return fs::file_size(m_path);
    }
    void close() override { m_stream.close(); }

private:
    std::fstream m_stream;
    fs::path m_path;
};

[[noreturn]] void raiseMissing(const fs::path& path)
{
    throw StatusError(fs::exists(path.parent_path()) ? fileNotFound : pathNotFound);
}

bool isReadOnly(const fs::path& path)
{
    return (fs::status(path).permissions() & fs::perms::owner_write) == fs::perms::none;
}

} // namespace

fs::path DiskFiles::native(const Text& path) const
{
    std::string text = toUtf8(isAbsolutePath(path) ? path : pathAppend(m_current, path));
    std::ranges::replace(text, '\\', '/');
    if (text.starts_with("C:/"))
        text.erase(0, 3);
    while (text.ends_with('/'))
        text.pop_back();
    return text.empty() ? m_root : m_root / text;
}

std::unique_ptr<OpenedFile> DiskFiles::open(const Text& path, FileMode mode)
{
    const fs::path file = native(path);
    const bool exists = fs::exists(file);
    if (!exists && (mode == FileMode::Read || !fs::exists(file.parent_path())))
        raiseMissing(file);
    if (exists && mode != FileMode::Read && isReadOnly(file))
        throw StatusError(fileAccessDenied);
    if (!exists)
        std::ofstream create(file);
    const auto how = mode == FileMode::Read ? std::ios::in
        : mode == FileMode::Replace         ? std::ios::out | std::ios::trunc
        : mode == FileMode::Append          ? std::ios::out | std::ios::app | std::ios::ate
                                            : std::ios::in | std::ios::out;
    auto opened = std::make_unique<DiskFile>(file, how);
    if (!opened->isOpen())
        throw StatusError(fileAccessDenied);
    return opened;
}

bool DiskFiles::facts(const Text& path, FileFacts& facts)
{
    const fs::path file = native(path);
    if (!fs::exists(file))
        return false;
    const bool isFolder = fs::is_directory(file);
    facts = {};
    facts.attributes = (isFolder ? FolderAttribute : ArchiveAttribute) | (isReadOnly(file) ? ReadOnlyAttribute : 0u);
    facts.size = isFolder ? 0 : fs::file_size(file);
    facts.modified = facts.created = dayCount({2018, 3, 5, 14, 7, 9});
    return true;
}

void DiskFiles::setAttributes(const Text& path, std::uint32_t attributes)
{
    const fs::path file = native(path);
    if (!fs::exists(file))
        raiseMissing(file);
    fs::permissions(file, fs::perms::owner_write,
        attributes & ReadOnlyAttribute ? fs::perm_options::remove : fs::perm_options::add);
}

std::vector<FolderEntry> DiskFiles::list(const Text& folder)
{
    if (!fs::is_directory(native(folder)))
        throw StatusError(pathNotFound);
    std::vector<FolderEntry> out;
    for (const auto& entry : fs::directory_iterator(native(folder))) {
        FolderEntry found{toText(entry.path().filename().string()), {}};
        facts(pathAppend(folder, found.name), found.facts);
        out.push_back(std::move(found));
    }
    std::ranges::sort(out, {}, &FolderEntry::name);
    return out;
}

void DiskFiles::remove(const Text& path)
{
    const fs::path file = native(path);
    if (!fs::exists(file))
        raiseMissing(file);
    if (isReadOnly(file) || fs::is_directory(file))
        throw StatusError(fileAccessDenied);
    fs::remove(file);
}

void DiskFiles::createFolder(const Text& path)
{
    const fs::path folder = native(path);
    if (fs::exists(folder))
        throw StatusError(fileExists);
    if (!fs::exists(folder.parent_path()))
        throw StatusError(pathNotFound);
    fs::create_directory(folder);
}

void DiskFiles::removeFolder(const Text& path)
{
    const fs::path folder = native(path);
    if (!fs::is_directory(folder))
        throw StatusError(pathNotFound);
    if (!fs::is_empty(folder))
        throw StatusError(folderNotEmpty);
    fs::remove(folder);
}

void DiskFiles::rename(const Text& from, const Text& to)
{
    if (!fs::exists(native(from)))
        raiseMissing(native(from));
    if (fs::exists(native(to)))
        throw StatusError(fileExists);
    fs::rename(native(from), native(to));
}

void DiskFiles::copy(const Text& from, const Text& to)
{
    if (!fs::exists(native(from)))
        raiseMissing(native(from));
    if (!fs::exists(native(to).parent_path()))
        throw StatusError(pathNotFound);
    fs::copy_file(native(from), native(to), fs::copy_options::overwrite_existing);
}

} // namespace zn::test
