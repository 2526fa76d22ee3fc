#pragma once

#include "zentrel/model/Geometry.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace zn::zentrel {

/// Gives each distinct shape of a document a stream of its own ("shapes/0.brep"); bodies that several
/// configurations share are stored once.
class ShapeStreams {
public:
    /// The name of the stream that holds the geometry.
    std::string nameOf(const Geometry& geometry);
    /// All of it by the streams' names.
    std::map<std::string, Geometry> all() const;
    /// All streams, name to content. Faces that have a surface are stored without their mesh.
    std::map<std::string, std::string> contents() const;

private:
    std::vector<Geometry> m_geometry;
};

/// Reads streams back; a stream that several bodies name gives shared geometry.
class ShapeSource {
public:
    using Entry = std::function<Geometry(const std::string& name)>;

    /// `entry` gives a stream's geometry and raises by itself when there is none.
    explicit ShapeSource(Entry entry)
        : m_entry(std::move(entry))
    {
    }
    Geometry geometry(const std::string& name);
    /// What was asked for, by the streams' names.
    const std::map<std::string, Geometry>& all() const { return m_all; }

private:
    Entry m_entry;
    std::map<std::string, Geometry> m_all;
};

} // namespace zn::zentrel
