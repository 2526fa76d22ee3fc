#include "zentrel/model/ShapeStreams.h"

#include <algorithm>

namespace zn::zentrel {

namespace {

std::string streamName(std::size_t index) { return "shapes/" + std::to_string(index) + ".brep"; }

} // namespace

std::string ShapeStreams::nameOf(const Geometry& geometry)
{
    const auto known = std::find_if(
        m_geometry.begin(), m_geometry.end(), [&](const Geometry& other) { return other.isSame(geometry); });
    const auto index = static_cast<std::size_t>(known - m_geometry.begin());
    if (known == m_geometry.end())
        m_geometry.push_back(geometry);
    return streamName(index);
}

std::map<std::string, Geometry> ShapeStreams::all() const
{
    std::map<std::string, Geometry> result;
    for (std::size_t index = 0; index < m_geometry.size(); ++index)
        result.emplace(streamName(index), m_geometry[index]);
    return result;
}

std::map<std::string, std::string> ShapeStreams::contents() const
{
    std::map<std::string, std::string> result;
    for (const auto& [name, geometry] : all())
        result.emplace(name, geometry.stream());
    return result;
}

Geometry ShapeSource::geometry(const std::string& name)
{
    if (const auto known = m_all.find(name); known != m_all.end())
        return known->second;
    return m_all.emplace(name, m_entry(name)).first->second;
}

} // namespace zn::zentrel
