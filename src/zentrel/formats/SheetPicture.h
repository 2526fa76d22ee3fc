#pragma once

#include "zentrel/formats/Projection.h"

namespace zn::zentrel {

/// A line of text on a sheet, in mm from the lower left corner.
struct Label {
    Point2 position{};   ///< left end of the base line
    double height = 3.0; ///< of a capital letter
    Text text;
};

/// A sheet as it is drawn: strokes and labels in mm of paper.
struct SheetPicture {
    Text name;
    double width = 0.0;
    double height = 0.0;
    std::vector<Stroke> strokes;
    std::vector<Label> labels;
};

/// The picture that many times as large: line weights aside, all of it.
SheetPicture scaled(SheetPicture picture, double factor);

/// A model as an isometric view shows it, without hidden lines, in its own size with a little room around it. Raises
/// `Kernel`; `InvalidArgument` for a model without anything to be seen. `file` is for sentences.
SheetPicture pictureOfModel(const Model& model, const std::filesystem::path& file);

/// Draws sheets: the views at their places, a frame and a title block with document, sheet, scale and paper.
class SheetPainter {
public:
    /// Curves stay within `tolerance` mm of paper. `document` is the drawing's path.
    SheetPainter(std::filesystem::path document, double tolerance)
        : m_document(std::move(document))
        , m_tolerance(tolerance)
    {
    }

    /// Raises what `ModelLoader::load` and `project` raise.
    SheetPicture paint(const Sheet& sheet);

private:
    void paintView(const View& view, double scale, SheetPicture& picture);

    std::filesystem::path m_document;
    double m_tolerance;
    ModelLoader m_loader;
};

/// "1:2", "5:1".
std::string scaleText(double scale);

/// The sheets with these names in their order; all of them without names. Raises `InvalidArgument`.
std::vector<const Sheet*> sheetsNamed(
    const DrawingDocument& drawing, const std::vector<Text>& names, const std::filesystem::path& document);

} // namespace zn::zentrel
