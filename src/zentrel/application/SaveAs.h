#pragma once

#include "zentrel/application/ModelDoc.h"

namespace zn::zentrel {

class ExportPdfData;

struct SaveRequest {
    Text path;                ///< backslash path; its extension chooses the format
    std::int32_t options = 0; ///< `SaveAsOption` bits
    std::shared_ptr<const ExportPdfData> pdf = nullptr;
};

struct SaveOutcome {
    std::int32_t errors = 0; ///< `FileSaveError` bits; 0 means saved
    std::int32_t warnings = 0;
};

/// Saves what the document shows now: its active configuration, or the chosen sheets. Before each file that is
/// written the document fires its save event with the file's path, and a listener that answers with a failure keeps
/// the file from being written. A failure's sentence goes to the application's report.
SaveOutcome saveDocument(ModelDoc& document, const SaveRequest& request);

/// The extensions as which such a document can be saved, with their dots and in small letters.
std::vector<Text> savedExtensions(DocumentKind kind);

} // namespace zn::zentrel
