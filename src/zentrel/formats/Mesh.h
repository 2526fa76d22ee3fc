#pragma once

#include <cstddef>
#include <IMeshTools_Parameters.hxx>
#include <TopoDS_Shape.hxx>

namespace zn::zentrel {

/// With the numbers that the preference uses; any other number counts as fine.
enum class MeshQuality { Coarse = 1, Fine = 2 };

/// Mesh parameters for a shape alone: the deflection is a fraction of the diagonal of its bounding box (coarse 1/1000,
/// fine 1/5000), the angle 30 or 10 degrees. So a model of 200 m meshes as one of 0.2 mm does.
IMeshTools_Parameters meshParameters(const TopoDS_Shape& shape, MeshQuality quality);

/// Faces that the kernel gave no triangle at the quality that was asked for, or not all of them.
struct Unmeshed {
    std::size_t lost = 0;
    std::size_t coarser = 0;    ///< which have triangles of coarse quality
    std::size_t negligible = 0; ///< of less than a thousand-millionth of the whole area: nobody can see them missing

    std::size_t gaps = 0; ///< which have triangles that leave gaps between them

    Unmeshed& operator+=(const Unmeshed& other);
};

/// Meshes the shape anew, as something of that diagonal. Faces that get no triangle are tried again at other angles and
/// then at finer deflections (fine ones at coarse quality before that), while all others keep their triangles. Faces
/// whose triangles have gaps are tried at the other angles, too, and stay as they were if that makes nothing better.
/// Faces that have only a tessellation keep theirs.
[[nodiscard]] Unmeshed mesh(const TopoDS_Shape& shape, MeshQuality quality, double diagonal);
/// By its own size.
[[nodiscard]] Unmeshed mesh(const TopoDS_Shape& shape, MeshQuality quality);

} // namespace zn::zentrel
