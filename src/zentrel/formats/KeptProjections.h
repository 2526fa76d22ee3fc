#pragma once

#include "zentrel/formats/Projection.h"

#include <memory>
#include <string>

namespace zn::zentrel {

/// The strokes of a view in the model's mm, whose polylines stay within `tolerance` mm of their curves.
struct FineStrokes {
    std::vector<Stroke> strokes;
    double tolerance = 0.0;
};
using FineStrokesRef = std::shared_ptr<const FineStrokes>;

/// A name for what is seen of the model, by the content of its geometry: equal for equal pictures, whatever files they
/// came from. Empty if the kernel would have to be asked.
std::string viewKey(const Model& model, const gp_Dir& direction, const gp_Dir& up, bool hiddenLines);

/// What this process projected a short while ago. The exact projection of a view takes seconds, and a drawing's sheets
/// and formats ask for the same view again and again.
/// Null if there is none as fine as `tolerance`.
FineStrokesRef keptProjection(const std::string& key, double tolerance);
/// Those that nobody has asked for the longest go beyond 64 MB of strokes.
void keepProjection(const std::string& key, FineStrokesRef strokes);

} // namespace zn::zentrel
