#pragma once

#include "zentrel/formats/Raster.h"
#include "zentrel/kernel/Remarks.h"

#include <functional>

/// Writers of pictures in pixels. Raised: `NotWritable`, `Kernel` for what the library refuses; what existed under the
/// target's name then stays.
namespace zn::zentrel {

/// With the numbers that the preferences use.
enum class TiffColors { BlackWhite = 0, Full = 1, Gray = 2 };
enum class TiffCompression { None = 0, PackBits = 1, Group4 = 2 };

struct TiffOptions {
    TiffColors colors = TiffColors::Full;
    TiffCompression compression = TiffCompression::None;
};

using AddPage = std::function<void(const Raster& page)>;

/// A TIFF 6.0 with the pages that `pages` adds one after the other. Told is when the compression took the colours away:
/// Group 4 fax holds black and white only.
Remarks writeTiff(const std::filesystem::path& file, const TiffOptions& options,
    const std::function<void(const AddPage& add)>& pages);

/// A JPEG of high quality.
void writeJpeg(const Raster& picture, const std::filesystem::path& file);

} // namespace zn::zentrel
