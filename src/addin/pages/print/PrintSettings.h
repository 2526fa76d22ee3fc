#pragma once

#include "addin/pages/print/PaperSizes.h"
#include "addin/pages/print/PrinterChoice.h"
#include "addin/pages/print/PrintFileList.h"

namespace zn {

/// Who decides about references' versions, the values of `__printer_refversiontype`.
enum class ReferenceVersion : std::int32_t { Referenced = 0, Latest = 1, Prompt = 2 };

/// The values of `__printer_margintype`, `__printer_headertype` and `__printer_footertype`.
namespace margins {
inline constexpr std::int32_t none = 0; ///< the printer's margins, no header, no footer
inline constexpr std::int32_t prompt = 1;
inline constexpr std::int32_t fixed = 2;
} // namespace margins

/// A run's print variables as they stood when the dialog started. What the dialog writes doesn't change what it shows.
struct PrintSettings {
    PrinterSelection printerSelection = PrinterSelection::Fixed;
    Text printerName;
    Text printerNames;
    std::int32_t paperSize = defaultPaperSize;
    bool userSizeChange = true;
    std::int32_t orientation = 0; ///< portrait, though a new task's page starts at landscape
    bool userOrientationChange = true;
    std::int32_t marginType = margins::prompt;
    std::int32_t headerType = margins::prompt;
    std::int32_t footerType = margins::prompt;
    AutoSelect autoSelect = AutoSelect::Drawings;
    /// Whether the user chooses the version of references: a missing variable lets him …
    bool asksVersion = true;
    /// … but starts with the referenced version, as 0 does.
    bool startsWithLatest = false;

    /// Raises the host's failures.
    static PrintSettings read(const ObjectRef& task);

    bool hasMarginsTab() const
    {
        return marginType == margins::prompt || headerType == margins::prompt || footerType == margins::prompt;
    }
};

} // namespace zn
