#pragma once

#include <cstdint>
#include <vector>

namespace zn::arkin {

/// Folders in the order in which a person entered them, to go back and forth.
class VisitedFolders {
public:
    /// A visit after having gone back replaces those that were ahead. The present folder is no new visit.
    void enter(std::int32_t folderId)
    {
        if (m_place > 0 && m_folders[m_place - 1] == folderId)
            return;
        m_folders.resize(m_place);
        m_folders.push_back(folderId);
        ++m_place;
    }
    bool canGoBack() const { return m_place > 1; }
    bool canGoForward() const { return m_place < m_folders.size(); }
    /// The folder before the present one, which it becomes.
    std::int32_t back() { return m_folders[--m_place - 1]; }
    std::int32_t forward() { return m_folders[m_place++]; }

private:
    std::vector<std::int32_t> m_folders;
    std::size_t m_place = 0; ///< of the present one, from 1 on
};

} // namespace zn::arkin
