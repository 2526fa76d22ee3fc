#pragma once

#include "language/Host.h"

#include <deque>
#include <unordered_map>

namespace zn::language {

/// The texts behind `StrPtr`. A pointer is a small number of the table's own, so that it also fits a `Long`;
/// equal texts share one. All stay until the end of the run.
class PointerTable : public TextPointers {
public:
    std::int64_t pointerTo(const Text& text)
    {
        const auto [hit, added] = m_indices.emplace(text, m_texts.size());
        if (added)
            m_texts.push_back(text);
        return firstPointer + static_cast<std::int64_t>(hit->second) * spacing;
    }

    const Text* textAt(std::int64_t pointer) const override
    {
        const std::int64_t offset = pointer - firstPointer;
        if (offset < 0 || offset % spacing != 0 || offset / spacing >= static_cast<std::int64_t>(m_texts.size()))
            return nullptr;
        return &m_texts[static_cast<std::size_t>(offset / spacing)];
    }

private:
    // Far from the numbers that macros compute with, lest one of them be taken for a text.
    static constexpr std::int64_t firstPointer = 0x5A4E0010;
    static constexpr std::int64_t spacing = 16;

    std::unordered_map<Text, std::size_t> m_indices;
    std::deque<Text> m_texts;
};

} // namespace zn::language
