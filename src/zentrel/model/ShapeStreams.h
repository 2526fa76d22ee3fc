#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <TopoDS_Shape.hxx>
#include <utility>
#include <vector>

namespace zentrel {

class ArchiveReader;

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

/// Reads streams back; a stream that several bodies name gives one shared shape. Raises `Damaged`.
class ShapeSource {
public:
    explicit ShapeSource(const ArchiveReader& archive)
        : m_archive(archive)
    {
    }
    TopoDS_Shape shape(const std::string& name);

private:
    const ArchiveReader& m_archive;
    std::map<std::string, TopoDS_Shape> m_shapes;
};

} // namespace zentrel
