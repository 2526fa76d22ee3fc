#pragma once

#include "zentrel/model/Document.h"

/// Writers of drawings. Views are projected with hidden lines removed, in a child process. `document` is the drawing's
/// path, for titles and sentences. Raised: `InvalidArgument` for an unknown sheet, `NotFound` and what reading
/// raises for a view's model, `NotWritable`, `Kernel`. What existed under the target's name then stays.
namespace zn::zentrel {

struct PdfOptions {
    std::vector<Text> sheets = {}; ///< names, each a page in this order; empty: all
    bool color = true;             ///< bodies' own colours for their edges; else all black
    bool highQuality = false;      ///< curves in finer steps
    bool headerFooter = false;     ///< document name above, page number below
    bool lineWeights = true;       ///< frame 0.5 mm, visible 0.35 mm, hidden 0.18 mm; else all 0.25 mm
};
/// A model in an isometric view, as large as it fits on A4; of the options, colours, weights and the quality count.
void writePdf(const Model& model, const std::filesystem::path& document, const std::filesystem::path& file,
    const PdfOptions& options = {});
void writePdf(const DrawingDocument& drawing, const std::filesystem::path& document, const std::filesystem::path& file,
    const PdfOptions& options = {});

struct DxfOptions {
    std::vector<Text> sheets = {}; ///< side by side in model space, in this order; empty: the active one
};
void writeDxf(const DrawingDocument& drawing, const std::filesystem::path& document, const std::filesystem::path& file,
    const DxfOptions& options = {});

} // namespace zn::zentrel
