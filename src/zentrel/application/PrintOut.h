#pragma once

#include "zentrel/application/ModelDoc.h"

namespace zn::zentrel {

/// znPageSetupInUse_e: whose paper, orientation and scale count.
enum class PageSetupInUse : std::int32_t {
    OfApplication = 1, ///< a fresh document's
    OfSheet = 2,       ///< each sheet on its own paper; the document's header and footer
    OfDocument = 3,
};

struct PrintRequest {
    /// Sheets of a drawing by their place, counted from 1; empty: all. Models have one page and ignore it.
    std::vector<std::int32_t> sheets;
    std::int32_t copies = 1;
    bool collate = false;
    Text printer; ///< empty: the document's
    Text file;    ///< backslash path of a PDF that gets the pages in place of the printer; empty: the printer
    PageSetupInUse setup = PageSetupInUse::OfDocument;
};

/// Prints what the document shows: the sheets, or the current view of a model. Once the printer has the whole job, the
/// document's view fires its print event for each sheet, with that sheet as the current one.
/// False if nothing was printed; the sentence that says why goes to the application's report.
bool printDocument(ModelDoc& document, const PrintRequest& request);

} // namespace zn::zentrel
