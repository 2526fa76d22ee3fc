#include "addin/files/FileLogic.h"
#include "base/Paths.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/LocalPipe.h"

#include <algorithm>

namespace zn {

namespace {

constexpr const char16_t* pipeMutex = u"{3A9E17C4-6D02-4B58-8F31-7AC2E05D94B6}";
constexpr const char16_t* pipeName = u"\\\\.\\pipe\\7C1D4A26-5B3E-4F08-9D62-1E8A0F3B6C47";
constexpr std::size_t longestPipePath = 260;
constexpr std::int32_t fileChanged = 1;
/// The host's service wants it three times for a file that is about to appear.
constexpr int noticesForNewFile = 3;
constexpr std::int32_t deleteEverything = -1;

/// A 32-bit code and the path with its terminator, both low byte first.
std::string pipeMessage(std::int32_t code, TextView path)
{
    std::string message;
    const auto unsignedCode = static_cast<std::uint32_t>(code);
    for (int shift = 0; shift < 32; shift += 8)
        message.push_back(static_cast<char>(unsignedCode >> shift & 0xFF));
    Text terminated(path.substr(0, longestPipePath));
    terminated.push_back(u'\0');
    for (const char16_t unit : terminated) {
        message.push_back(static_cast<char>(unit & 0xFF));
        message.push_back(static_cast<char>(unit >> 8));
    }
    return message;
}

} // namespace

void FileLogic::NoteSavedFile(TextView path, TextView configuration, bool hidden)
{
    if (path.empty() || !m_vault)
        return;
    const Text canonical = canonicalPath(path);
    if (m_notedPaths.contains(foldCase(canonical)))
        return TakeLateLabel(canonical, configuration);

    if (const Status kept = m_runPaths ? m_runPaths->ReserveOutput(canonical) : S_OK; failed(kept)) {
        if (kept != E_ABORT)
            NoteRefusal(Text(path), u"The file was not saved: ", kept);
        throw StatusError(kept); // an application that heeds its listeners then leaves the other run's file alone
    }

    std::shared_ptr<IArkFolder> folder;
    std::shared_ptr<IArkFile> file;
    Status status = m_vault->GetFileFromPath(canonical, &folder, file);
    OutputRecord record;
    record.path = path;
    record.source = m_currentSource;
    record.configuration = configuration;
    record.hidden = hidden;
    record.insideVault = startsWithNoCase(canonical, m_vaultRoot);
    record.notedAt = m_platform.clock.now();

    if (status != S_OK) {
        RemoveStaleFile(record.path);
    } else {
        status = file->GetId(record.docId);
        if (hidden)
            return;
        status = m_replaceExisting ? MakeRoomForReplacement(canonical, *folder, *file, record)
                                   : TakeForNewVersion(*folder, *file, record);
        if (failed(status)) {
            NoteRefusal(record.path,
                m_replaceExisting ? u"The file in the vault was not replaced: " : u"The file gets no new version: ",
                status);
            return;
        }
    }
    for (int i = 0; record.docId == 0 && i < noticesForNewFile; ++i)
        NotifyFileChange(fileChanged, canonical);
    m_notedPaths.insert(foldCase(path));
    m_records.push_back(std::move(record));
}

/// The application may have gone away before it could tell what was active, and the macro was run again.
void FileLogic::TakeLateLabel(TextView path, TextView configuration)
{
    const auto known = std::find_if(m_records.begin(), m_records.end(),
        [&](const OutputRecord& record) { return !record.printEntry && equalNoCase(record.path, path); });
    if (known != m_records.end() && known->configuration.empty())
        known->configuration = configuration;
}

void FileLogic::RemoveStaleFile(const Text& path)
{
    const auto attributes = m_platform.files.attributes(path);
    if (!attributes || attributes->folder)
        return;
    if (attributes->readOnly)
        m_platform.files.setReadOnly(path, false);
    m_platform.files.removeFile(path);
}

Status FileLogic::MakeRoomForReplacement(
    const Text& canonical, IArkFolder& folder, IArkFile& file, OutputRecord& record)
{
    record.replaces = true;
    Status status = file.GetId(record.docId);
    NotifyFileChange(fileChanged, canonical);
    if (!failed(status))
        status = folder.DeleteFile(0, record.docId, deleteEverything);
    record.docId = 0;
    return status;
}

Status FileLogic::TakeForNewVersion(IArkFolder& folder, IArkFile& file, OutputRecord& record)
{
    std::int16_t checkedOut = 0;
    Status status = folder.GetId(record.projId);
    if (!failed(status))
        status = file.GetCurrentVersion(record.version);
    if (!failed(status))
        status = file.IsCheckedOut(checkedOut);
    if (!failed(status) && checkedOut == 0) // whose check-out it is makes no difference
        status = file.CheckOut(record.projId, 0, 0);
    record.added = !failed(status);
    record.before = m_platform.files.attributes(record.path);
    record.replaces = true;
    return status;
}

void FileLogic::NotePrintedItem(TextView printer, TextView configuration)
{
    OutputRecord record;
    record.extra = printer;
    record.configuration = configuration;
    record.source = m_currentSource;
    record.printEntry = true;
    m_records.push_back(std::move(record));
}

void FileLogic::NotifyFileChange(std::int32_t code, const Text& path)
{
    // The service belongs to the host and may be absent, which is no failure of the task.
    m_platform.pipe.send(pipeMutex, pipeName, pipeMessage(code, path));
}

void FileLogic::PrepareLogFile(const Text& path)
{
    if (path.empty() || !m_vault)
        return;
    std::shared_ptr<IArkFolder> folder;
    std::shared_ptr<IArkFile> file;
    if (m_vault->GetFileFromPath(canonicalPath(path), &folder, file) != S_OK || !file)
        return;
    std::int16_t checkedOut = 0;
    std::int32_t folderId = 0;
    if (failed(file->IsCheckedOut(checkedOut)) || checkedOut != 0 || failed(folder->GetId(folderId)))
        return;
    file->CheckOut(folderId, 0, 0);
}

} // namespace zn
