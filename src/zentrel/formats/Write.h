#pragma once

#include "zentrel/formats/Mesh.h"
#include "zentrel/kernel/Remarks.h"
#include "zentrel/model/Model.h"

/// Writers of parts and assemblies. Each writes to a temporary name and renames; on a failure it raises
/// `DocumentError` and leaves what existed. A crash of the kernel costs
/// the file only. Returned is what a person should know of a file that was written. Raised: `Unsupported` (the format
/// can't hold this model), `NotWritable`, `Kernel`.
namespace zn::zentrel {

/// Units of an output file, with the numbers that the preferences use.
enum class LengthUnit { Millimeters = 0, Centimeters = 1, Meters = 2, Inches = 3, Feet = 4 };

/// How long the unit is in mm.
double millimetersOf(LengthUnit unit);

/// What STEP holds of a model, with the numbers that the preferences use.
enum class GeometryPreference { SolidSurface = 0, Curves = 1, CurvesAndSketches = 2 };

struct StepOptions {
    int protocol = 203; ///< 203 or 214
    GeometryPreference geometry = GeometryPreference::SolidSurface;
};
Remarks writeStep(const Model& model, const std::filesystem::path& file, const StepOptions& options = {});

struct IgesOptions {
    bool solidAndSurface = true;  ///< write faces and solids
    int representation = 0;       ///< 0 trimmed surfaces (type 144), 3 manifold solids (type 186)
    bool wireframe = false;       ///< write the edges as curves (besides, or alone)
    int system = 0;               ///< 1: every surface and curve as NURBS; all others: standard
    bool freeCurves = true;       ///< write bodies that are curves
    bool highTrimAccuracy = true; ///< write the finest tolerance of the model, not its average
    bool flattenHierarchy = true; ///< all bodies at one level; else a group for each component
};
Remarks writeIges(const Model& model, const std::filesystem::path& file, const IgesOptions& options = {});

struct StlOptions {
    bool binary = true;
    LengthUnit unit = LengthUnit::Millimeters;
    MeshQuality quality = MeshQuality::Coarse;
    bool keepPosition = false; ///< false: the model is moved so that no coordinate is negative, if one is
};
Remarks writeStl(const Model& model, const std::filesystem::path& file, const StlOptions& options = {});

struct VrmlOptions {
    LengthUnit unit = LengthUnit::Millimeters;
    MeshQuality quality = MeshQuality::Coarse;
};
Remarks writeVrml(const Model& model, const std::filesystem::path& file, const VrmlOptions& options = {});

/// A three-dimensional view of the model in XAML: a Viewport3D with a camera, lights, and a group for each component
/// with its transform. Meshes that stand in several places are resources, there once.
Remarks writeXaml(const Model& model, const std::filesystem::path& file, MeshQuality quality = MeshQuality::Coarse);

/// One of several files of an export.
struct ModelFile {
    std::filesystem::path file;
    ModelRef model;
};

/// For formats that save components into separate files: one file for each placed part, named
/// "<target> - <component>.<extension>", geometry at its place in the assembly. A model without components
/// gives the target alone.
std::vector<ModelFile> componentFiles(const ModelRef& model, const std::filesystem::path& target);

} // namespace zn::zentrel
