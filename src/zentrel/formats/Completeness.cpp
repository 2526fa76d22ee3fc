#include "zentrel/formats/Completeness.h"

#include "contracts/documents/DocumentError.h"

#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TopTools_MapOfShape.hxx>

namespace zn::zentrel {

namespace {

std::string missingText(std::size_t missing, std::size_t listed, const std::string& what)
{
    return std::to_string(missing) + " of its " + std::to_string(listed) + " " + what;
}

} // namespace

ReadCount& ReadCount::operator+=(const ReadCount& other)
{
    solids += other.solids;
    missingSolids += other.missingSolids;
    faces += other.faces;
    missingFaces += other.missingFaces;
    failedEntities += other.failedEntities;
    return *this;
}

std::size_t countFaces(const std::vector<Body>& bodies)
{
    TopTools_MapOfShape faces;
    for (const Body& body : bodies) {
        for (TopExp_Explorer explorer(body.shape, TopAbs_FACE); explorer.More(); explorer.Next())
            faces.Add(explorer.Current().Located(TopLoc_Location()));
    }
    return static_cast<std::size_t>(faces.Extent());
}

void requireComplete(const ReadCount& count, const std::vector<Body>& bodies, const std::filesystem::path& file)
{
    std::string missing;
    if (count.missingSolids > 0)
        missing = missingText(count.missingSolids, count.solids, "solids");
    if (count.missingFaces > 0)
        missing += (missing.empty() ? "" : " and ") + missingText(count.missingFaces, count.faces, "faces");
    if (!missing.empty())
        throw DocumentError(ErrorKind::Incomplete,
            "The file " + quoted(file) + " could be read only in part: " + missing + " are missing.");
    if (count.failedEntities > 0)
        throw DocumentError(ErrorKind::Incomplete,
            "The file " + quoted(file) + " could be read only in part: " + std::to_string(count.failedEntities)
                + " of its entities are broken.");
    if (bodies.empty())
        throw DocumentError(ErrorKind::Incomplete, "The file " + quoted(file) + " holds no geometry that can be read.");
}

} // namespace zn::zentrel
