#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace zn::arkin {

/// What a run keeps: a version of a local copy, or outputs by the beginning and the ending of their paths. Paths are
/// folded UTF-8.
struct KeptPath {
    std::string beginning;
    std::string ending;       ///< empty for any; nothing for a local copy
    std::int32_t version = 0; ///< of a local copy, whose whole path `beginning` is; 0 for outputs

    bool isOutput() const { return version == 0; }
};

/// Whether two runs may not keep both at the same time: one writes what the other writes or reads, or both read
/// different versions of a file at its one place.
bool meet(const KeptPath& one, const KeptPath& other);

/// Many kept paths, among which those that meet another one are found without looking at all of them.
class PathIndex {
public:
    explicit PathIndex(std::vector<KeptPath> paths);

    /// The first that meets `path`; null if none does.
    const KeptPath* find(const KeptPath& path) const;

private:
    using Row = std::vector<KeptPath>::const_iterator;
    Row firstFrom(std::string_view beginning) const;

    std::vector<KeptPath> m_paths;   ///< in the order of their beginnings
    std::set<std::size_t> m_lengths; ///< of the beginnings
};

} // namespace zn::arkin
