#pragma once

#include "base/Object.h"
#include "base/Text.h"

namespace zn {

/// How the results of a conversion are labelled, by the task's variables for sheets or for configurations.
struct LabelRule {
    std::int32_t files = 0;   ///< grouping into output files; bit 4: one file each
    std::int32_t outputs = 0; ///< what is output; bit 2: all, bit 8: the named one
    Text named;

    /// The label of a save that shows `active`; `all` is the label of a file that holds everything.
    Text labelOf(const Text& active, const Text& all) const;
};

/// The rules that a task's variables give.
struct ResultLabels {
    LabelRule sheets;
    LabelRule configurations;

    /// Reads what is present on a run; absent variables leave their fields. Raises the host's failure, `E_POINTER` if
    /// `task` is none, and failed conversions.
    void read(const ObjectRef& task);
};

} // namespace zn
