#include "addin/files/FileLogic.h"

// What a run tells its host of each file and output.

namespace zn {

namespace {

ArkFileResult resultOf(const OutputRecord& source)
{
    ArkFileResult result;
    result.source = source.path;
    result.sourceId = source.docId;
    result.sourceVersion = effectiveVersion(source);
    result.part = source.selConfiguration;
    result.seconds = source.seconds;
    return result;
}

} // namespace

std::vector<ArkFileResult> FileLogic::ListResults(const SelectionRecords& items) const
{
    std::vector<ArkFileResult> results;
    for (const auto& item : items) {
        const std::size_t first = results.size();
        for (const OutputRecord& record : m_records) {
            if (record.source != item.get() || record.hidden)
                continue;
            ArkFileResult& result = results.emplace_back(resultOf(*item));
            result.part = record.configuration;
            result.output = record.printEntry ? record.extra : record.path;
            result.outputId = record.printEntry ? 0 : record.docId;
            result.outcome = !IsThere(record) ? FileOutcome::Failed
                : record.replaces             ? FileOutcome::Replaced
                                              : FileOutcome::Made;
        }
        for (const auto& [key, refused] : m_refused) {
            if (refused.source != item.get())
                continue;
            ArkFileResult& result = results.emplace_back(resultOf(*item));
            result.output = refused.path;
            result.outcome = FileOutcome::Failed;
        }
        if (!LacksOutput(*item) && results.size() > first)
            continue;
        ArkFileResult& result = results.emplace_back(resultOf(*item));
        const bool reached = item->worked || item->complained || item->seconds > 0.0 || !item->leftOut.empty();
        result.outcome = !LacksOutput(*item) ? FileOutcome::Made : reached ? FileOutcome::Failed : FileOutcome::Skipped;
    }
    return results;
}

} // namespace zn
