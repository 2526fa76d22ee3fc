#pragma once

#include "addin/pages/print/FileInfo.h"

#include <map>
#include <utility>

namespace zn {

/// The record of a row that has been expanded: which of the rows below it are, too. It knows rows by their file and
/// configuration, so that reading the list anew with another version finds them again.
class PrintUIPos {
public:
    PrintUIPos* find(const FileInfo& file)
    {
        const auto known = m_expanded.find(keyOf(file));
        return known == m_expanded.end() ? nullptr : &known->second;
    }
    PrintUIPos& expand(const FileInfo& file) { return m_expanded[keyOf(file)]; }
    void collapse(const FileInfo& file) { m_expanded.erase(keyOf(file)); }

private:
    using Key = std::pair<std::int32_t, Text>;
    static Key keyOf(const FileInfo& file) { return {file.documentId, file.configuration}; }

    std::map<Key, PrintUIPos> m_expanded;
};

} // namespace zn
