#include "zentrel/model/Document.h"

#include "contracts/documents/DocumentError.h"

#include <algorithm>

namespace zn::zentrel {

namespace {

struct Paper {
    PaperSize size;
    const char* name;
    double shortSide; // mm
    double longSide;
};

constexpr Paper papers[] = {
    {PaperSize::A, "A", 215.9, 279.4},
    {PaperSize::B, "B", 279.4, 431.8},
    {PaperSize::C, "C", 431.8, 558.8},
    {PaperSize::D, "D", 558.8, 863.6},
    {PaperSize::E, "E", 863.6, 1117.6},
    {PaperSize::A0, "A0", 841.0, 1189.0},
    {PaperSize::A1, "A1", 594.0, 841.0},
    {PaperSize::A2, "A2", 420.0, 594.0},
    {PaperSize::A3, "A3", 297.0, 420.0},
    {PaperSize::A4, "A4", 210.0, 297.0},
};

const Paper& paperOf(PaperSize size)
{
    return *std::find_if(std::begin(papers), std::end(papers), [&](const Paper& paper) { return paper.size == size; });
}

/// Index of the named element: an exact name wins over one in another case.
template <class Named>
std::size_t namedIndex(const std::vector<Named>& elements, std::size_t active, const Text& name, const char* what,
    const std::filesystem::path& document)
{
    if (name.empty())
        return active;
    auto found
        = std::find_if(elements.begin(), elements.end(), [&](const Named& element) { return element.name == name; });
    if (found == elements.end())
        found = std::find_if(elements.begin(), elements.end(),
            [&](const Named& element) { return zn::equalNoCase(element.name, name); });
    if (found == elements.end())
        throw DocumentError(ErrorKind::InvalidArgument,
            "The document " + quoted(document) + " has no " + what + " '" + zn::toUtf8(name) + "'.");
    return static_cast<std::size_t>(found - elements.begin());
}

} // namespace

const char* paperName(PaperSize size) { return paperOf(size).name; }

std::optional<PaperSize> paperFromName(zn::TextView name)
{
    for (const Paper& paper : papers) {
        if (zn::equalNoCase(name, zn::toText(paper.name)))
            return paper.size;
    }
    return {};
}

std::pair<double, double> Sheet::size() const
{
    const Paper& sheetPaper = paperOf(paper);
    return landscape ? std::pair(sheetPaper.longSide, sheetPaper.shortSide)
                     : std::pair(sheetPaper.shortSide, sheetPaper.longSide);
}

std::size_t configurationIndex(const PartDocument& part, const Text& name, const std::filesystem::path& document)
{
    return namedIndex(part.configurations, part.active, name, "configuration", document);
}

std::size_t configurationIndex(
    const AssemblyDocument& assembly, const Text& name, const std::filesystem::path& document)
{
    return namedIndex(assembly.configurations, assembly.active, name, "configuration", document);
}

std::size_t sheetIndex(const DrawingDocument& drawing, const Text& name, const std::filesystem::path& document)
{
    return namedIndex(drawing.sheets, drawing.active, name, "sheet", document);
}

} // namespace zn::zentrel
