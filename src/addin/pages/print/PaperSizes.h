#pragma once

#include "base/Text.h"

#include <array>
#include <cstdint>

/// The paper sizes that a print task knows. The codes are the CAD application's, and tasks store them as they stand.
namespace zn {

struct PaperSize {
    std::int32_t code;
    TextView name;
    /// The task variable with the printer for this size; empty where a size has none.
    TextView printerVariable;
};

inline constexpr std::array<PaperSize, 14> paperSizes = {{
    {-1, u"Default", u"__printer_papsize_DEF"},
    {0, u"A", u"__printer_papsize_A"},
    {1, u"AVertical", u""},
    {2, u"B", u"__printer_papsize_B"},
    {3, u"C", u"__printer_papsize_C"},
    {4, u"D", u"__printer_papsize_D"},
    {5, u"E", u"__printer_papsize_E"},
    {6, u"A0", u"__printer_papsize_A0"},
    {7, u"A1", u"__printer_papsize_A1"},
    {8, u"A2", u"__printer_papsize_A2"},
    {9, u"A3", u"__printer_papsize_A3"},
    {10, u"A4", u"__printer_papsize_A4"},
    {11, u"A4Vertical", u""},
    {12, u"User Defined", u""},
}};

/// The size of a new task, A4.
inline constexpr std::int32_t defaultPaperSize = 10;

/// Whether lists offer the size: the default, the upright twins and the user-defined size are hidden.
constexpr bool isShown(const PaperSize& size)
{
    constexpr std::uint32_t hidden = 0x3005; // bit number code + 1
    return (hidden >> (size.code + 1) & 1U) == 0;
}

/// The row of a code; null if there is none.
constexpr const PaperSize* findPaperSize(std::int32_t code)
{
    for (const PaperSize& size : paperSizes) {
        if (size.code == code)
            return &size;
    }
    return nullptr;
}

} // namespace zn
