#pragma once

#include "base/Text.h"

#include <vector>

namespace zn {

class Printers;

/// How the printer of a run is chosen, the values of `__printer_prseltype`.
enum class PrinterSelection : std::int32_t { Fixed = 0, Prompt = 1, ByPaperSize = 2 };

/// The printers that the print dialog offers: those of the administrator's list (one to a line), or the fixed one where
/// the list doesn't hold it, and of these the ones that the machine has.
std::vector<Text> offeredPrinters(Printers& printers, TextView nameList, TextView fixedName);

} // namespace zn
