#include "platform/linux/LinuxFileSystem.h"

#include "base/Paths.h"
#include "platform/FileDescriptor.h"
#include "platform/linux/Errors.h"
#include "platform/linux/NameLookup.h"
#include "platform/Registry.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>

namespace zn {

namespace {

constexpr TextView drivesKey = u"Software\\Arkin\\Drives";
constexpr mode_t writeBits = S_IWUSR | S_IWGRP | S_IWOTH;

/// With the system's reason for a failure.
FileResult noted(bool success) { return success ? FileResult{true, {}} : FileResult{false, toText(systemText(errno))}; }

/// The result of an operation that couldn't begin.
template <class Result> Result undone(const std::string& reason)
{
    Result result;
    if constexpr (requires { result.reason; })
        result.reason = toText(reason);
    return result;
}

bool isReadOnly(const std::filesystem::path& path)
{
    struct stat status { };
    return ::stat(path.c_str(), &status) == 0 && (status.st_mode & writeBits) == 0;
}

/// Opens a file for writing. A read-only one is refused here, because a superuser's open would succeed.
FileDescriptor openForWriting(const std::filesystem::path& path, int flags)
{
    if (isReadOnly(path)) {
        errno = EACCES;
        return FileDescriptor();
    }
    return FileDescriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, 0666));
}

FileResult writeWhole(const std::filesystem::path& path, int flags, const std::string& bytes)
{
    FileDescriptor file = openForWriting(path, flags);
    return noted(file && file.writeAll(bytes) && file.close());
}

bool copyBytes(int from, int to)
{
    constexpr std::size_t chunk = 1 << 24;
    ssize_t copied = 0;
    do
        copied = ::sendfile(to, from, nullptr, chunk);
    while (copied > 0 || (copied < 0 && errno == EINTR));
    return copied == 0;
}

std::optional<std::string> readWhole(int file)
{
    struct stat status { };
    if (::fstat(file, &status) != 0)
        return std::nullopt;
    // One byte more than the size shows the end without a second round; files of /proc have no size at all.
    std::string bytes(static_cast<std::size_t>(status.st_size) + 1, '\0');
    std::size_t length = 0;
    for (;;) {
        if (length == bytes.size())
            bytes.resize(2 * length);
        const ssize_t got = ::read(file, bytes.data() + length, bytes.size() - length);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        length += static_cast<std::size_t>(got);
    }
    bytes.resize(length);
    return bytes;
}

/// "\a\b" as "a/b", the form in which names are looked up.
std::string machineNames(TextView names)
{
    std::string result = toUtf8(names);
    std::replace(result.begin(), result.end(), '\\', '/');
    result.erase(0, result.find_first_not_of('/'));
    return result;
}

} // namespace

std::filesystem::path LinuxFileSystem::driveRoot(char16_t letter)
{
    const Text name = toUpper(Text(1, letter));
    if (name == u"Z")
        return "/";
    const auto value = m_registry.read(RegistryRoot::User, drivesKey, name);
    const auto folder = value ? value->asText() : std::nullopt;
    if (!folder || folder->empty())
        throw StatusError(E_INVALIDARG,
            "The drive " + toUtf8(name) + ": isn't mapped. Name its folder in the registry key " + toUtf8(drivesKey)
                + ".");
    return toUtf8(*folder);
}

std::filesystem::path LinuxFileSystem::toMachine(TextView path)
{
    if (path.empty())
        throw StatusError(E_INVALIDARG, "A path is empty.");
    if (path.find(u'\0') != TextView::npos)
        throw StatusError(E_INVALIDARG, "A path holds a zero character.");
    if (startsWithDrive(path))
        return findIgnoringCase(driveRoot(path[0]), machineNames(TextView(canonicalPath(path)).substr(2)));
    if (path.starts_with(u"\\\\") || path.starts_with(u"//"))
        throw StatusError(
            E_INVALIDARG, "The network path '" + toUtf8(path) + "' can't be reached. Map its folder to a drive.");
    if (path.front() == u'\\' || path.front() == u'/')
        return findIgnoringCase("/", machineNames(canonicalPath(path)));
    return toMachine(pathAppend(fromMachine(std::filesystem::current_path()), path));
}

Text LinuxFileSystem::fromMachine(const std::filesystem::path& path)
{
    const std::string absolute = std::filesystem::absolute(path).lexically_normal().string();
    Text names = toText(absolute);
    if (absolute.find('\\') != std::string::npos || toUtf8(names) != absolute)
        throw StatusError(
            E_INVALIDARG, "The path '" + absolute + "' holds a backslash or is no UTF-8. Rename the file or folder.");
    std::replace(names.begin(), names.end(), u'/', u'\\');
    if (names.size() > 1 && names.back() == u'\\')
        names.pop_back();
    return u"Z:" + names;
}

template <class Work>
auto LinuxFileSystem::onMachine(TextView path, const Work& work) -> decltype(work(std::filesystem::path()))
{
    using Result = decltype(work(std::filesystem::path()));
    try {
        return work(toMachine(path));
    } catch (const StatusError& failure) {
        return undone<Result>(failure.what());
    } catch (const std::filesystem::filesystem_error& failure) {
        return undone<Result>(failure.code().message());
    }
}

std::optional<FileAttributes> LinuxFileSystem::attributes(TextView path)
{
    return onMachine(path, [](const std::filesystem::path& file) -> std::optional<FileAttributes> {
        struct stat status { };
        if (::stat(file.c_str(), &status) != 0)
            return std::nullopt;
        FileAttributes result;
        result.readOnly = (status.st_mode & writeBits) == 0;
        result.folder = S_ISDIR(status.st_mode);
        result.size = result.folder ? 0 : static_cast<std::uint64_t>(status.st_size);
        result.modified = status.st_mtime;
        result.modifiedNs = status.st_mtim.tv_sec * 1'000'000'000LL + status.st_mtim.tv_nsec;
        return result;
    });
}

FileResult LinuxFileSystem::setReadOnly(TextView path, bool readOnly)
{
    return onMachine(path, [readOnly](const std::filesystem::path& file) {
        struct stat status { };
        if (::stat(file.c_str(), &status) != 0)
            return noted(false);
        const mode_t mode = readOnly ? status.st_mode & ~writeBits : status.st_mode | S_IWUSR;
        return noted(::chmod(file.c_str(), mode & 07777) == 0);
    });
}

FileResult LinuxFileSystem::removeFile(TextView path)
{
    return onMachine(path, [](const std::filesystem::path& file) {
        if (isReadOnly(file)) {
            errno = EACCES;
            return noted(false);
        }
        return noted(::unlink(file.c_str()) == 0 || errno == ENOENT);
    });
}

FileResult LinuxFileSystem::renameFile(TextView from, TextView to)
{
    return onMachine(from, [this, to](const std::filesystem::path& source) {
        std::filesystem::path destination = toMachine(to);
        // Only the spelling changes: the name on the disk is the file itself.
        if (destination == source)
            destination.replace_filename(toUtf8(pathFileName(to)));
        if (destination == source)
            return noted(true);
        return noted(::renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, destination.c_str(), RENAME_NOREPLACE) == 0);
    });
}

FileResult LinuxFileSystem::copyFile(TextView from, TextView to)
{
    return onMachine(from, [this, to](const std::filesystem::path& source) {
        const FileDescriptor input(::open(source.c_str(), O_RDONLY | O_CLOEXEC));
        if (!input)
            return noted(false);
        const std::filesystem::path destination = toMachine(to);
        if (destination == source)
            return noted(true);
        FileDescriptor output = openForWriting(destination, O_TRUNC);
        return noted(output && copyBytes(input.number(), output.number()) && output.close());
    });
}

FileResult LinuxFileSystem::createFolder(TextView path)
{
    return onMachine(
        path, [](const std::filesystem::path& folder) { return noted(::mkdir(folder.c_str(), 0777) == 0); });
}

FileResult LinuxFileSystem::createFolders(TextView path)
{
    return onMachine(path, [](const std::filesystem::path& folder) {
        std::error_code failure;
        if (std::filesystem::create_directories(folder, failure))
            return FileResult{true, {}};
        return FileResult{false, toText(failure ? failure.message() : systemText(EEXIST))};
    });
}

std::vector<Text> LinuxFileSystem::list(TextView folder)
{
    return onMachine(folder, [](const std::filesystem::path& place) {
        std::vector<Text> names;
        for (const auto& entry : std::filesystem::directory_iterator(place)) {
            const std::string name = entry.path().filename().string();
            Text text = toText(name);
            if (name.find('\\') == std::string::npos && toUtf8(text) == name)
                names.push_back(std::move(text));
        }
        return names;
    });
}

FileBytes LinuxFileSystem::readBytes(TextView path)
{
    return onMachine(path, [](const std::filesystem::path& place) {
        // A pipe or a device has no end.
        const FileDescriptor file(::open(place.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
        struct stat status { };
        if (file && ::fstat(file.number(), &status) == 0 && !S_ISREG(status.st_mode))
            return undone<FileBytes>(S_ISDIR(status.st_mode) ? systemText(EISDIR) : "it is no file");
        if (auto bytes = file ? readWhole(file.number()) : std::nullopt)
            return FileBytes(std::move(*bytes));
        return undone<FileBytes>(systemText(errno));
    });
}

FileResult LinuxFileSystem::writeBytes(TextView path, const std::string& bytes)
{
    return onMachine(path, [&bytes](const std::filesystem::path& place) { return writeWhole(place, O_TRUNC, bytes); });
}

FileResult LinuxFileSystem::appendBytes(TextView path, const std::string& bytes)
{
    return onMachine(path, [&bytes](const std::filesystem::path& place) { return writeWhole(place, O_APPEND, bytes); });
}

Text LinuxFileSystem::temporaryFolder()
{
    std::error_code failure;
    const auto folder = std::filesystem::temp_directory_path(failure);
    return fromMachine(failure ? "/tmp" : folder);
}

Text LinuxFileSystem::temporaryFile(TextView folder, TextView prefix)
{
    constexpr TextView ending = u".tmp";
    std::string name = (toMachine(folder) / (toUtf8(prefix) + "XXXXXX.tmp")).string();
    const FileDescriptor file(::mkostemps(name.data(), static_cast<int>(ending.size()), O_CLOEXEC));
    if (!file)
        throw systemFailure("The folder '" + toUtf8(folder) + "' takes no temporary file");
    return pathAppend(folder, toText(name.substr(name.rfind('/') + 1)));
}

} // namespace zn
