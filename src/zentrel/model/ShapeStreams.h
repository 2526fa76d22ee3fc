#pragma once

#include <functional>
#include <map>
#include <string>
#include <TopoDS_Shape.hxx>
#include <utility>
#include <vector>

namespace zn::zentrel {

/// Gives each distinct shape of a document a stream of its own ("shapes/0.brep"); bodies that several
/// configurations share are stored once.
class ShapeStreams {
public:
    /// The name of the stream that holds the shape.
    std::string nameOf(const TopoDS_Shape& shape);
    /// All streams, name to content. Faces that have a surface are stored without their mesh.
    std::map<std::string, std::string> contents() const;

private:
    std::vector<TopoDS_Shape> m_shapes;
};

/// Reads streams back; a stream that several bodies name gives one shared shape.
class ShapeSource {
public:
    using Entry = std::function<std::string(const std::string& name)>;

    /// `entry` gives a stream's content and raises by itself when there is none.
    explicit ShapeSource(Entry entry)
        : m_entry(std::move(entry))
    {
    }
    /// Raises `std::invalid_argument` with half a sentence for a stream that holds no geometry.
    TopoDS_Shape shape(const std::string& name);

private:
    Entry m_entry;
    std::map<std::string, TopoDS_Shape> m_shapes;
};

} // namespace zn::zentrel
