#include "platform/linux/FolderPrinters.h"

#include "base/Paths.h"
#include "base/Status.h"
#include "platform/AtomicFile.h"
#include "platform/FileDescriptor.h"
#include "platform/FileSystem.h"
#include "platform/linux/Errors.h"
#include "platform/Registry.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zn {

namespace {

/// Bytes of a file's name without its number and extension; the usual limit of all is 255.
constexpr std::size_t longestName = 200;
constexpr int mostFilesOfOneName = 100000;

/// The title as a file's name: visible, and without separators and control characters.
std::string fileNameOf(const Text& title)
{
    Text name;
    for (const char16_t unit : title) {
        // Half of a pair of units must not be left behind.
        const bool newCharacter = unit < 0xDC00 || unit > 0xDFFF;
        if (newCharacter && toUtf8(name).size() + 4 > longestName)
            break;
        name.push_back(unit < u' ' || unit == u'/' || unit == u'\\' || unit == u':' ? u'_' : unit);
    }
    if (name.empty() || name.front() == u'.')
        name.insert(0, u"Print");
    return toUtf8(name);
}

/// False if the name is taken.
bool renameUnlessTaken(const std::filesystem::path& temporary, const std::filesystem::path& file)
{
    int result = ::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, file.c_str(), RENAME_NOREPLACE);
    if (result != 0 && (errno == EINVAL || errno == ENOSYS)) {
        // Network file systems know no such renaming, but a second name that must be free.
        result = ::link(temporary.c_str(), file.c_str());
        if (result == 0)
            ::unlink(temporary.c_str());
    }
    if (result != 0 && errno != EEXIST)
        throw systemFailure("The file '" + file.string() + "' can't be written");
    return result == 0;
}

/// Gives the finished file the first name that is free.
void publish(const std::filesystem::path& temporary, const std::filesystem::path& folder, const std::string& name)
{
    for (int number = 1; number <= mostFilesOfOneName; ++number) {
        const auto suffix = number == 1 ? std::string() : fmt::format(" ({})", number);
        if (renameUnlessTaken(temporary, folder / (name + suffix + ".pdf")))
            return;
    }
    throw StatusError(E_FAIL,
        fmt::format("There are {} files '{}' in '{}'. Remove old ones.", mostFilesOfOneName, name, folder.string()));
}

void writeNewFile(const std::filesystem::path& folder, const std::string& name, std::string_view bytes)
{
    constexpr mode_t readableByAll = 0644;
    std::string temporary = (folder / ".print-XXXXXX").string();
    FileDescriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!file)
        throw systemFailure("The folder '" + folder.string() + "' takes no file");
    try {
        if (!file.writeAll(bytes) || ::fchmod(file.number(), readableByAll) != 0 || ::fsync(file.number()) != 0
            || !file.close())
            throw systemFailure("A file in the folder '" + folder.string() + "' can't be written");
        publish(temporary, folder, name);
    } catch (...) {
        ::unlink(temporary.c_str());
        throw;
    }
    if (const int number = syncPath(folder))
        throw StatusError(systemStatus(number),
            "The folder '" + folder.string() + "' could not be written to the disk: " + systemText(number) + ".");
}

} // namespace

std::vector<Printer> FolderPrinters::list()
{
    std::vector<Printer> printers;
    for (const Text& name : m_registry.subKeys(RegistryRoot::Machine, folderPrintersKey)) {
        const auto value
            = m_registry.read(RegistryRoot::Machine, pathAppend(folderPrintersKey, name), printerFolderValue);
        if (auto folder = value ? value->asText() : std::nullopt; folder && !folder->empty())
            printers.push_back({.name = name, .kind = PrinterKind::Local, .target = std::move(*folder), .margin = 0.0});
    }
    return printers;
}

std::filesystem::path FolderPrinters::folderOf(const Text& printer)
{
    const auto found = find(printer);
    if (!found)
        throw StatusError(E_FAIL, "There is no printer '" + toUtf8(printer) + "' on this machine.");
    return found->target.front() == u'/' ? std::filesystem::path(toUtf8(found->target))
                                         : m_files.toMachine(found->target);
}

void FolderPrinters::print(const Text& printer, const PrintJob& job)
{
    const auto folder = folderOf(printer);
    std::error_code ignored;
    if (!std::filesystem::is_directory(folder, ignored))
        throw StatusError(E_FAIL,
            fmt::format("The printer '{}' prints into the folder '{}', which isn't there. Make the folder or give the "
                        "printer another one.",
                toUtf8(printer), folder.string()));
    try {
        writeNewFile(folder, fileNameOf(job.title), job.pdf);
    } catch (const StatusError& error) {
        throw StatusError(
            error.status(), fmt::format("The printer '{}' took no job: {}", toUtf8(printer), error.what()));
    }
}

} // namespace zn
