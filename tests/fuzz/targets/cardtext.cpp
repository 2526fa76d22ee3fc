// The text of the file card transfer table: the rows that were read, written down again, read the same.
#include "addin/files/CardMapping.h"
#include "tests/fuzz/Promise.h"

#include <algorithm>

using namespace zn;
using fuzz::promise;

namespace {

const std::map<Text, std::int32_t> ids = {{u"Description", 7}, {u"Title", 8}, {u"Note", 9}, {u"日", 10}, {u"", 11}};

Text nameOf(std::int32_t id)
{
    const auto found = std::find_if(ids.begin(), ids.end(), [&](const auto& entry) { return entry.second == id; });
    promise(found != ids.end(), "a row names variables of the vault");
    return found->first;
}

Text written(const CardMapping& row)
{
    Text line = nameOf(row.destVariableId) + u";" + numberText(static_cast<std::int32_t>(row.kind)) + u";";
    if (row.kind == CardSourceKind::Variable)
        line += nameOf(row.sourceVariableId);
    return line + row.text + u"\n";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Text text = toText({reinterpret_cast<const char*>(data), size});
    const auto rows = parseCardMappings(text, ids);
    promise(rows.size() <= split(text, u'\n').size(), "a line gives one row at most");
    Text again;
    for (const CardMapping& row : rows) {
        promise(row.text.empty() || row.kind == CardSourceKind::FreeText, "only free text has a text");
        again += written(row);
    }
    const auto reread = parseCardMappings(again, ids);
    promise(std::equal(rows.begin(), rows.end(), reread.begin(), reread.end(),
                [](const CardMapping& a, const CardMapping& b) { return written(a) == written(b); }),
        "rows come back as they were");
    return 0;
}
