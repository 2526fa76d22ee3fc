#include "addin/files/FileLogic.h"
#include "base/Format.h"
#include "platform/FileSystem.h"

#include <algorithm>
#include <utility>

// What a run leaves undone, file by file. The run goes on after each of them, so somebody has to count and to tell.

namespace zn {

std::vector<FileFailure> FileLogic::TakeFailures() { return std::exchange(m_failures, {}); }

bool FileLogic::HasResults(const OutputRecord& item) const
{
    return std::any_of(m_records.begin(), m_records.end(), [&](const OutputRecord& r) { return r.source == &item; })
        || std::any_of(
            m_refused.begin(), m_refused.end(), [&](const auto& refused) { return refused.second.source == &item; });
}

OutputTally FileLogic::CountOutputs(const SelectionRecords& items)
{
    OutputTally tally;
    const auto count = [&](bool isThere) {
        ++tally.expected;
        tally.missing += isThere ? 0 : 1;
    };
    for (const auto& item : items) {
        if (LacksOutput(*item))
            count(false);
    }
    for (const OutputRecord& record : m_records) {
        if (!record.hidden && record.source)
            count(IsThere(record));
    }
    for (std::size_t i = 0; i < m_refused.size(); ++i)
        count(false);
    return tally;
}

/// Whether there should be an output besides those that there are. A file that was given up may have left some of them.
bool FileLogic::LacksOutput(const OutputRecord& item) const
{
    const bool wanted = m_taskKind == TaskKind::Conversion || m_taskKind == TaskKind::Printing || !item.worked;
    return HasResults(item) ? !item.leftOut.empty() : wanted;
}

/// Whether an output is where it belongs. A printout is announced before the printer has it; what goes wrong then
/// stands in the log.
bool FileLogic::IsThere(const OutputRecord& record) const
{
    if (record.printEntry)
        return !record.source->complained;
    return !WasLeftAsItWas(record)
        && (record.delivered || (!record.insideVault && m_platform.files.fileExists(record.path)));
}

void FileLogic::NoteUnkeptSaves()
{
    for (const OutputRecord& record : m_records) {
        if (record.printEntry || !record.source || record.source->complained)
            continue;
        if (!m_platform.files.fileExists(record.path))
            m_failures.push_back(
                {record.path, u"The CAD application announced it as saved, but there is no such file."});
        else if (WasLeftAsItWas(record))
            m_failures.push_back(
                {record.path, u"The CAD application announced it as saved, but the file is as it was before."});
    }
}

/// A save onto an output of an earlier run that came to nothing. The file is there all the same, so only its time
/// tells, with the macro's complaint where the file had come to the disk but a moment before: disks count in coarse
/// steps.
bool FileLogic::WasLeftAsItWas(const OutputRecord& record) const
{
    if (!record.before || (!record.source->complained && record.before->modified >= record.notedAt - 1))
        return false;
    const auto now = m_platform.files.attributes(record.path);
    return now && now->size == record.before->size && now->modifiedNs == record.before->modifiedNs;
}

/// The vault is asked at once: it tells its last failure only.
void FileLogic::NoteRefusal(const Text& path, const char16_t* what, Status status)
{
    if (!m_refused.emplace(foldCase(path), RefusedSave{path, m_currentSource}).second)
        return; // said already
    Text name;
    Text why;
    if (m_vault->GetErrorText(status, name, why) != S_OK || why.empty())
        why = formatText("status %08X.", static_cast<std::uint32_t>(status));
    m_failures.push_back({path, what + why});
}

void FileLogic::MarkLeftOut(const ObjectRef& utility, SelectionRecords& selection)
{
    const auto teller = query<IArkLeftOut>(utility);
    std::vector<ArkLeftOut> files;
    if (!teller)
        return;
    checkStatus(teller->GetLeftOut(files));
    for (const ArkLeftOut& file : files) {
        for (const auto& record : selection) {
            if (record->docId == file.fileId && record->projId == file.folderId)
                record->leftOut = file.sentence.empty() ? Text(u"The vault could not bring the file.") : file.sentence;
        }
    }
}

/// After a check-in that wasn't whole: who came in all the same. A host that doesn't tell has checked nothing in.
void FileLogic::TakeLeftOut(const ObjectRef& utility)
{
    const auto teller = query<IArkLeftOut>(utility);
    std::vector<ArkLeftOut> files;
    if (!teller || failed(teller->GetLeftOut(files)))
        return;
    for (OutputRecord& record : m_records) {
        const auto leftOut = std::find_if(
            files.begin(), files.end(), [&](const ArkLeftOut& file) { return file.fileId == record.docId; });
        if (!record.added)
            continue;
        record.delivered = leftOut == files.end();
        if (!record.delivered)
            m_failures.push_back({record.path, leftOut->sentence});
    }
}

} // namespace zn
