#pragma once

#include "zentrel/formats/Triangles.h"

#include <array>

namespace zn::zentrel {

/// A triangle with what a light needs to know of the surface at its corners.
struct LitTriangle {
    std::array<gp_XYZ, 3> points;
    std::array<gp_XYZ, 3> normals; ///< of length 1; those of neighbours agree where the surface is smooth
    std::array<float, 3> color{};  ///< red, green and blue, from 0 to 1
};

/// Gives each triangle, with its points as `placed` puts them. `scale` is pixels a unit there: triangles of less than
/// two pixels' height take the normals of their neighbours.
void forEachLit(const ModelTriangles& triangles, const std::function<gp_XYZ(const gp_XYZ&)>& placed, double scale,
    const std::function<void(const LitTriangle&)>& use);

/// The model's triangles in its own coordinates as a binary PLY file: three vertices a triangle, each with position,
/// normal and colour, and the faces that they make. For those who want to turn the model. Raises what `meshesOf`
/// raises; `file` is for sentences. Format: G. Turk, The PLY Polygon File Format, 1994.
std::string plyOf(const Model& model, const std::filesystem::path& file);

} // namespace zn::zentrel
