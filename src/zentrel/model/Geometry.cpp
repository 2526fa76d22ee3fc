#include "zentrel/model/Geometry.h"

#include "zentrel/kernel/KernelReason.h"

#include <algorithm>
#include <BinTools.hxx>
#include <BRep_Tool.hxx>
#include <map>
#include <sstream>
#include <stdexcept>
#include <TopoDS.hxx>
#include <TopoDS_Iterator.hxx>

namespace zn::zentrel {

namespace {

/// More faces than a program could ever work on; a small stream can name one face that often by nesting.
constexpr std::size_t mostFaces = 10'000'000;

TopoDS_Shape shapeOf(const std::string& content)
{
    std::istringstream stream(content, std::ios::binary);
    TopoDS_Shape shape;
    std::string reason = "it holds no geometry";
    try {
        BinTools::Read(shape, stream);
    } catch (const Standard_Failure& failure) {
        reason = kernelReason(failure);
        shape.Nullify();
    } catch (const std::exception& failure) {
        reason = failure.what();
        shape.Nullify();
    }
    if (shape.IsNull())
        throw std::invalid_argument(reason);
    return shape;
}

/// Counts each shape once and takes it that often as it stands somewhere.
class FactFinder {
public:
    GeometryFacts find(const TopoDS_Shape& shape)
    {
        GeometryFacts facts;
        facts.faces = facesOf(shape);
        facts.hasSurfaces = m_hasSurfaces;
        return facts;
    }

private:
    std::size_t facesOf(const TopoDS_Shape& shape)
    {
        if (shape.ShapeType() > TopAbs_FACE)
            return 0;
        if (const auto known = m_faces.find(shape.TShape().get()); known != m_faces.end())
            return known->second;
        std::size_t faces = 0;
        if (shape.ShapeType() == TopAbs_FACE) {
            TopLoc_Location location;
            m_hasSurfaces = m_hasSurfaces && !BRep_Tool::Surface(TopoDS::Face(shape), location).IsNull();
            faces = 1;
        } else {
            for (TopoDS_Iterator parts(shape); parts.More(); parts.Next())
                faces += facesOf(parts.Value());
        }
        if (faces > mostFaces)
            throw std::invalid_argument("it has more than " + std::to_string(mostFaces) + " faces");
        m_faces.emplace(shape.TShape().get(), faces);
        return faces;
    }

    std::map<const TopoDS_TShape*, std::size_t> m_faces;
    bool m_hasSurfaces = true;
};

} // namespace

struct Geometry::State {
    std::string stream; ///< empty for what was made from a shape
    TopoDS_Shape shape; ///< null for what nobody has looked at
    std::optional<GeometryFacts> facts;
};

Geometry::Geometry(const TopoDS_Shape& shape)
    : m_state(shape.IsNull() ? nullptr : std::make_shared<State>())
{
    if (m_state)
        m_state->shape = shape;
}

Geometry Geometry::unread(std::string stream)
{
    Geometry geometry;
    geometry.m_state = std::make_shared<State>();
    geometry.m_state->stream = std::move(stream);
    return geometry;
}

Geometry Geometry::withStream() const
{
    Geometry geometry;
    if (!m_state)
        return geometry;
    geometry.m_state = std::make_shared<State>(*m_state);
    geometry.m_state->stream = stream();
    return geometry;
}

bool Geometry::isSame(const Geometry& other) const
{
    if (m_state == other.m_state)
        return true;
    return m_state && other.m_state && !m_state->shape.IsNull() && m_state->shape.IsEqual(other.m_state->shape);
}

Geometry::operator const TopoDS_Shape&() const
{
    static const TopoDS_Shape nothing;
    if (!m_state)
        return nothing;
    if (m_state->shape.IsNull())
        m_state->shape = shapeOf(m_state->stream);
    return m_state->shape;
}

std::string Geometry::stream() const
{
    if (!m_state || !m_state->stream.empty())
        return m_state ? m_state->stream : std::string();
    std::ostringstream stream(std::ios::binary);
    BinTools::Write(m_state->shape, stream, Standard_False, Standard_False, BinTools_FormatVersion_CURRENT);
    return std::move(stream).str();
}

std::string_view Geometry::givenStream() const { return m_state ? m_state->stream : std::string_view(); }

GeometryFacts Geometry::facts() const
{
    if (!m_state)
        return {};
    if (!m_state->facts)
        m_state->facts = FactFinder().find(*this);
    return *m_state->facts;
}

void Geometry::tellFacts(const GeometryFacts& facts) const { m_state->facts = facts; }

} // namespace zn::zentrel
