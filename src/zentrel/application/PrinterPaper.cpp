#include "zentrel/application/PrinterPaper.h"

#include <algorithm>

namespace zn::zentrel {

namespace {

/// Sizes that not all printers know have numbers of the user's own.
constexpr std::int32_t userDefined = 256;

struct PaperRow {
    std::int32_t number = 0;
    PrinterPaper paper;
    /// What the numbers of sheets' papers are taken from; the others are further papers of printers.
    std::optional<PaperSize> size;
};

constexpr PaperRow papers[] = {
    {userDefined + 6, {215.9, 279.4}, PaperSize::A}, {userDefined + 7, {279.4, 431.8}, PaperSize::B},
    {24, {431.8, 558.8}, PaperSize::C}, {25, {558.8, 863.6}, PaperSize::D}, {26, {863.6, 1117.6}, PaperSize::E},
    {userDefined + 4, {841.0, 1189.0}, PaperSize::A0}, {userDefined + 5, {594.0, 841.0}, PaperSize::A1},
    {66, {420.0, 594.0}, PaperSize::A2}, {8, {297.0, 420.0}, PaperSize::A3}, {9, {210.0, 297.0}, PaperSize::A4},
    {77, {297.0, 210.0}, {}}, {1, {215.9, 279.4}, {}}, // Letter
    {3, {279.4, 431.8}, {}},                           // Tabloid
    {5, {215.9, 355.6}, {}},                           // Legal
    {11, {148.0, 210.0}, {}},                          // A5
};

} // namespace

std::optional<PrinterPaper> printerPaper(std::int32_t number)
{
    const auto row = std::ranges::find(papers, number, &PaperRow::number);
    return row == std::end(papers) ? std::nullopt : std::optional(row->paper);
}

std::int32_t printerPaperNumber(PaperSize size)
{
    return std::ranges::find(papers, std::optional(size), &PaperRow::size)->number;
}

} // namespace zn::zentrel
