#pragma once

#include "base/Text.h"

namespace zn {

/// Who wants to know which files the CAD application saves and what it prints.
class SavedFileNotes {
public:
    virtual ~SavedFileNotes() = default;

    /// The CAD application is about to save `path` with this configuration or sheet active. Called before the first
    /// byte is written. `hidden` marks a file of the system's own.
    virtual void NoteSavedFile(TextView path, TextView configuration, bool hidden) = 0;
    /// A print has been sent.
    virtual void NotePrintedItem(TextView printer, TextView configuration) = 0;
};

} // namespace zn
