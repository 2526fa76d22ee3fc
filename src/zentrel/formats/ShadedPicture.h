#pragma once

#include "zentrel/model/Model.h"

#include <cstdint>
#include <filesystem>
#include <gp_Dir.hxx>
#include <string>
#include <vector>

namespace zn::zentrel {

/// From where a model is looked at. Parallel rays; the model fills the picture but for a little room around it.
struct PictureView {
    gp_Dir direction{1, -1, 1}; ///< from the model to the eye
    gp_Dir up{0, 0, 1};
    int width = 512; ///< pixels, 16 to 8192
    int height = 512;
};

/// The model as shaded surfaces with the edges that they have in the picture, drawn without a display, as a PNG with a
/// transparent background. Each pixel is the mean of four. Raises what `meshesOf` raises; `file` is for sentences.
std::string shadedPicture(const Model& model, const PictureView& view, const std::filesystem::path& file);

/// The same in pixels of four bytes (blue, green, red, alpha; multiplied by alpha), row by row from above.
std::vector<std::uint8_t> shadedPixels(const Model& model, const PictureView& view, const std::filesystem::path& file);

} // namespace zn::zentrel
