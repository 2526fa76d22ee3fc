#pragma once

#include "zentrel/model/Manifest.h"

/// What the manifests of parts, assemblies and drawings are made of.
namespace zn::zentrel::manifest {

Json textJson(const Text& text);
Text textFrom(const Json& json);

Json propertiesJson(const Properties& properties);
Properties propertiesFrom(const Json& json);

Json colorJson(const Color& color);
Color colorFrom(const Json& json);

/// Three rows of four numbers. Read, it raises `std::invalid_argument` unless it is a rigid motion.
Json placementJson(const gp_Trsf& placement);
gp_Trsf placementFrom(const Json& json);

} // namespace zn::zentrel::manifest
