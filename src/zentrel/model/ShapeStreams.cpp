#include "zentrel/model/ShapeStreams.h"

#include <algorithm>
#include <BinTools.hxx>
#include <sstream>
#include <Standard_Failure.hxx>
#include <stdexcept>

namespace zn::zentrel {

namespace {

std::string streamName(std::size_t index) { return "shapes/" + std::to_string(index) + ".brep"; }

} // namespace

std::string ShapeStreams::nameOf(const TopoDS_Shape& shape)
{
    const auto known = std::find_if(
        m_shapes.begin(), m_shapes.end(), [&](const TopoDS_Shape& other) { return other.IsEqual(shape); });
    const auto index = static_cast<std::size_t>(known - m_shapes.begin());
    if (known == m_shapes.end())
        m_shapes.push_back(shape);
    return streamName(index);
}

std::map<std::string, std::string> ShapeStreams::contents() const
{
    std::map<std::string, std::string> result;
    for (std::size_t index = 0; index < m_shapes.size(); ++index) {
        std::ostringstream stream(std::ios::binary);
        BinTools::Write(m_shapes[index], stream, Standard_False, Standard_False, BinTools_FormatVersion_CURRENT);
        result.emplace(streamName(index), std::move(stream).str());
    }
    return result;
}

TopoDS_Shape ShapeSource::shape(const std::string& name)
{
    if (const auto known = m_shapes.find(name); known != m_shapes.end())
        return known->second;
    std::istringstream stream(m_entry(name), std::ios::binary);
    TopoDS_Shape shape;
    std::string reason = "it holds no geometry";
    try {
        BinTools::Read(shape, stream);
    } catch (const Standard_Failure& failure) {
        reason = failure.GetMessageString();
        shape.Nullify();
    } catch (const std::exception& failure) {
        reason = failure.what();
        shape.Nullify();
    }
    if (shape.IsNull())
        throw std::invalid_argument("its part '" + name + "' can't be read (" + reason + ")");
    m_shapes.emplace(name, shape);
    return shape;
}

} // namespace zn::zentrel
