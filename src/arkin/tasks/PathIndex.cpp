#include "arkin/tasks/PathIndex.h"

#include <algorithm>

namespace zn::arkin {

namespace {

bool nest(std::string_view one, std::string_view other) { return one.starts_with(other) || other.starts_with(one); }

bool endTheSame(std::string_view one, std::string_view other) { return one.ends_with(other) || other.ends_with(one); }

} // namespace

bool meet(const KeptPath& one, const KeptPath& other)
{
    if (one.isOutput() && other.isOutput())
        return nest(one.beginning, other.beginning) && endTheSame(one.ending, other.ending);
    if (!one.isOutput() && !other.isOutput())
        return one.beginning == other.beginning && one.version != other.version;
    const KeptPath& output = one.isOutput() ? one : other;
    const std::string& copy = one.isOutput() ? other.beginning : one.beginning;
    return copy.starts_with(output.beginning) && copy.ends_with(output.ending);
}

PathIndex::PathIndex(std::vector<KeptPath> paths)
    : m_paths(std::move(paths))
{
    std::sort(m_paths.begin(), m_paths.end(),
        [](const KeptPath& one, const KeptPath& other) { return one.beginning < other.beginning; });
    for (const KeptPath& path : m_paths)
        m_lengths.insert(path.beginning.size());
}

PathIndex::Row PathIndex::firstFrom(std::string_view beginning) const
{
    return std::lower_bound(m_paths.begin(), m_paths.end(), beginning,
        [](const KeptPath& path, std::string_view text) { return path.beginning < text; });
}

const KeptPath* PathIndex::find(const KeptPath& path) const
{
    // What begins like the path stands together; what the path begins with has one of few lengths.
    for (Row row = firstFrom(path.beginning); row != m_paths.end() && row->beginning.starts_with(path.beginning); ++row)
        if (meet(*row, path))
            return &*row;
    for (const std::size_t length : m_lengths) {
        if (length >= path.beginning.size())
            break;
        const auto beginning = std::string_view(path.beginning).substr(0, length);
        for (Row row = firstFrom(beginning); row != m_paths.end() && row->beginning == beginning; ++row)
            if (meet(*row, path))
                return &*row;
    }
    return nullptr;
}

} // namespace zn::arkin
