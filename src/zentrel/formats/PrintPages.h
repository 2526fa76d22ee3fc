#pragma once

#include "zentrel/formats/SheetPicture.h"

namespace zn::zentrel {

/// Texts at the left, in the middle and at the right. Line feeds part lines.
struct PageTexts {
    Text left;
    Text center;
    Text right;
};

/// Paper, and where on it a picture may stand. Lengths in mm.
struct PageLayout {
    double width = 210.0;
    double height = 297.0;
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    /// Paper length by the picture's length; 0 makes it as large as the place allows. A larger picture is cut off.
    double scale = 0.0;
    /// Above and below the picture, within the margins; they take their height from the picture's place.
    PageTexts header;
    PageTexts footer;
};

struct PrintPage {
    SheetPicture picture;
    PageLayout layout;
};

struct PrintCopies {
    int count = 1;
    bool collate = false; ///< whole sets after each other; else the copies of a page
};

/// The pages as a PDF. Lines have the same weight on every paper. `document` is for titles and sentences.
/// Raises `InvalidArgument` for margins that leave no place, and `Kernel`.
std::string printedPdf(
    const std::vector<PrintPage>& pages, const PrintCopies& copies, const std::filesystem::path& document);

} // namespace zn::zentrel
