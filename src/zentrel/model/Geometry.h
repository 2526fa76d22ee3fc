#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <TopoDS_Shape.hxx>

namespace zn::zentrel {

/// What a program may know of a shape without calling the kernel.
struct GeometryFacts {
    std::size_t faces = 0;   ///< as they are placed: a face that is there twice counts twice
    bool hasSurfaces = true; ///< every face has a surface
    bool operator==(const GeometryFacts&) const = default;
};

/// A body's geometry. It comes as a stream of bytes and stays one in a program that only passes it on; the kernel makes
/// a shape of it when somebody asks for one, which only its own processes do (zentrel/kernel). Copies share it.
class Geometry {
public:
    Geometry() = default;
    Geometry(const TopoDS_Shape& shape); // NOLINT(google-explicit-constructor): a shape is geometry
    /// A stream that nobody has looked at yet.
    static Geometry unread(std::string stream);

    /// The same shape with its stream, which is then `givenStream`.
    Geometry withStream() const;

    bool isNull() const { return !m_state; }
    bool isSame(const Geometry& other) const;

    /// Raises `std::invalid_argument` with half a sentence for a stream that holds no geometry.
    operator const TopoDS_Shape&() const; // NOLINT(google-explicit-constructor)
    const TopoDS_Shape& shape() const { return *this; }
    std::string stream() const;
    /// The stream that it came as; empty for what was made of a shape. Lives as long as the geometry.
    std::string_view givenStream() const;

    /// Those that were told, or those of the shape.
    GeometryFacts facts() const;
    void tellFacts(const GeometryFacts& facts) const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace zn::zentrel
