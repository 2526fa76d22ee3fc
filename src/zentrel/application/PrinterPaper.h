#pragma once

#include "zentrel/model/Document.h"

/// The numbers that printers have for paper sizes.
namespace zn::zentrel {

/// In mm, as the paper lies in the printer: width and height of a page in portrait orientation.
struct PrinterPaper {
    double width = 0;
    double height = 0;
};

/// None for a number that isn't known.
std::optional<PrinterPaper> printerPaper(std::int32_t number);
std::int32_t printerPaperNumber(PaperSize size);

} // namespace zn::zentrel
