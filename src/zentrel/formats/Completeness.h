#pragma once

#include "zentrel/model/Document.h"

#include <cstddef>

namespace zn::zentrel {

/// What a file lists and what of it could not be read.
struct ReadCount {
    std::size_t solids = 0;
    std::size_t missingSolids = 0;
    std::size_t faces = 0; ///< and surfaces that stand alone
    std::size_t missingFaces = 0;
    std::size_t failedEntities = 0; ///< geometry that is broken in the file

    ReadCount& operator+=(const ReadCount& other);
};

/// Raises `Incomplete` if something is missing or broken, or if there are no bodies at all.
void requireComplete(const ReadCount& count, const std::vector<Body>& bodies, const std::filesystem::path& file);

/// Distinct faces of all bodies.
std::size_t countFaces(const std::vector<Body>& bodies);

} // namespace zn::zentrel
