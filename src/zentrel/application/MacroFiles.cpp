#include "zentrel/application/MacroFiles.h"

#include "base/Dates.h"
#include "base/Paths.h"
#include "platform/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace zn::zentrel {

namespace {

using namespace zn::language;
using zn::Status;
using zn::StatusError;

constexpr std::pair<int, Status> statuses[] = {
    {ENOENT, fileNotFound},
    {ENOTDIR, pathNotFound},
    {EMFILE, tooManyFiles},
    {ENFILE, tooManyFiles},
    {EACCES, fileAccessDenied},
    {EPERM, fileAccessDenied},
    {EROFS, fileAccessDenied},
    {EISDIR, fileAccessDenied},
    {ETXTBSY, fileIsShared},
    {ENOSPC, deviceFull},
    {EDQUOT, deviceFull},
    {ENAMETOOLONG, badFileName},
    {ENOTEMPTY, folderNotEmpty},
    {EEXIST, fileExists},
};

[[noreturn]] void raise(const std::filesystem::path& path, int number)
{
    Status status = zn::E_FAIL;
    for (const auto& [known, one] : statuses)
        if (known == number)
            status = one;
    std::error_code ignored;
    if (number == ENOENT && !std::filesystem::is_directory(path.parent_path(), ignored))
        status = pathNotFound;
    throw StatusError(status, path.string() + ": " + std::strerror(number));
}

class MachineFile : public OpenedFile {
public:
    MachineFile(std::filesystem::path path, zn::FileDescriptor descriptor, bool append)
        : m_path(std::move(path))
        , m_descriptor(std::move(descriptor))
        , m_append(append)
    {
    }
    std::size_t read(char* buffer, std::size_t count) override
    {
        std::size_t done = 0;
        while (done < count) {
            const ssize_t got = ::read(m_descriptor.number(), buffer + done, count - done);
            if (got < 0 && errno != EINTR)
                raise(m_path, errno);
            if (got == 0)
                break;
            done += got > 0 ? static_cast<std::size_t>(got) : 0;
        }
        return done;
    }

    void write(std::string_view bytes) override
    {
        if (!m_descriptor.writeAll(bytes))
            raise(m_path, errno);
    }

    void seek(std::uint64_t position) override
    {
        if (lseek(m_descriptor.number(), static_cast<off_t>(position), SEEK_SET) < 0)
            raise(m_path, errno);
    }

    std::uint64_t position() override
    {
        return m_append ? size() : static_cast<std::uint64_t>(lseek(m_descriptor.number(), 0, SEEK_CUR));
    }

    std::uint64_t size() override
    {
        struct stat found { };
        if (fstat(m_descriptor.number(), &found) != 0)
            raise(m_path, errno);
        return static_cast<std::uint64_t>(found.st_size);
    }

    void close() override
    {
        if (!m_descriptor.close())
            raise(m_path, errno);
    }

private:
    std::filesystem::path m_path;
    zn::FileDescriptor m_descriptor;
    bool m_append;
};

int openFlags(FileMode mode)
{
    switch (mode) {
    case FileMode::Read:
        return O_RDONLY;
    case FileMode::Replace:
        return O_WRONLY | O_CREAT | O_TRUNC;
    case FileMode::Append:
        return O_WRONLY | O_CREAT | O_APPEND;
    default:
        return O_RDWR | O_CREAT;
    }
}

bool readFacts(const std::filesystem::path& path, FileFacts& facts)
{
    struct stat found { };
    if (stat(path.c_str(), &found) != 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return false;
        raise(path, errno);
    }
    const bool folder = S_ISDIR(found.st_mode);
    facts.attributes = folder ? FolderAttribute : ArchiveAttribute;
    if ((found.st_mode & 0222) == 0)
        facts.attributes |= ReadOnlyAttribute;
    facts.size = folder ? 0 : static_cast<std::uint64_t>(found.st_size);
    facts.modified = zn::dayCountFromUnix(found.st_mtime);
    facts.created = facts.modified;
    return true;
}

bool isReadOnly(const std::filesystem::path& path)
{
    FileFacts facts;
    return readFacts(path, facts) && (facts.attributes & ReadOnlyAttribute) != 0;
}

void check(const std::error_code& failure, const std::filesystem::path& path)
{
    if (failure)
        raise(path, failure.value());
}

} // namespace

MacroFiles::MacroFiles(zn::FileSystem& files)
    : m_files(files)
    , m_current(files.fromMachine(std::filesystem::current_path()))
{
}

Text MacroFiles::absolute(const Text& path) const
{
    return zn::canonicalPath(zn::isAbsolutePath(path) ? path : zn::pathAppend(m_current, path));
}

std::unique_ptr<OpenedFile> MacroFiles::open(const Text& path, FileMode mode)
{
    const auto file = machine(path);
    if (mode != FileMode::Read && isReadOnly(file))
        raise(file, EACCES);
    zn::FileDescriptor descriptor(::open(file.c_str(), openFlags(mode) | O_CLOEXEC, 0666));
    if (!descriptor)
        raise(file, errno);
    return std::make_unique<MachineFile>(file, std::move(descriptor), mode == FileMode::Append);
}

bool MacroFiles::facts(const Text& path, FileFacts& facts) { return readFacts(machine(path), facts); }

void MacroFiles::setAttributes(const Text& path, std::uint32_t attributes)
{
    if (!m_files.setReadOnly(absolute(path), (attributes & ReadOnlyAttribute) != 0))
        raise(machine(path), std::filesystem::exists(machine(path)) ? EACCES : ENOENT);
}

std::vector<FolderEntry> MacroFiles::list(const Text& folder)
{
    const auto place = machine(folder);
    if (!std::filesystem::is_directory(place))
        raise(place, ENOTDIR);
    std::vector<FolderEntry> entries;
    for (const Text& name : m_files.list(absolute(folder))) {
        FolderEntry entry{name, {}};
        if (readFacts(place / zn::toUtf8(name), entry.facts))
            entries.push_back(std::move(entry));
    }
    std::sort(entries.begin(), entries.end(), [](const FolderEntry& a, const FolderEntry& b) {
        const int order = zn::compareNoCase(a.name, b.name);
        return order != 0 ? order < 0 : a.name < b.name;
    });
    return entries;
}

void MacroFiles::remove(const Text& path)
{
    const auto file = machine(path);
    if (isReadOnly(file))
        raise(file, EACCES);
    if (unlink(file.c_str()) != 0)
        raise(file, errno);
}

void MacroFiles::createFolder(const Text& path)
{
    const auto folder = machine(path);
    if (mkdir(folder.c_str(), 0777) != 0)
        raise(folder, errno);
}

void MacroFiles::removeFolder(const Text& path)
{
    const auto folder = machine(path);
    if (rmdir(folder.c_str()) != 0)
        raise(folder, errno);
}

void MacroFiles::rename(const Text& from, const Text& to)
{
    const auto source = machine(from);
    const auto target = machine(to);
    // The same file in another spelling of its case may be renamed.
    if (std::filesystem::exists(target) && !std::filesystem::equivalent(source, target))
        raise(target, EEXIST);
    std::error_code failure;
    std::filesystem::rename(source, target, failure);
    check(failure, source);
}

void MacroFiles::copy(const Text& from, const Text& to)
{
    const auto source = machine(from);
    const auto target = machine(to);
    if (isReadOnly(target))
        raise(target, EACCES);
    std::error_code failure;
    std::filesystem::copy_file(source, target, std::filesystem::copy_options::overwrite_existing, failure);
    check(failure, std::filesystem::exists(source) ? target : source);
}

void MacroFiles::setCurrentFolder(const Text& path)
{
    const Text folder = absolute(path);
    if (!std::filesystem::is_directory(m_files.toMachine(folder)))
        raise(m_files.toMachine(folder), ENOTDIR);
    m_current = folder;
}

} // namespace zn::zentrel
