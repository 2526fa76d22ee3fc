#pragma once

#include "addin/files/OutputRecord.h"
#include "contracts/host/ArkTask.h"

namespace zn {

/// What is known of a task's outputs before its files are fetched.
struct OutputPlan {
    std::vector<Text> patterns; ///< `OutputPath`, `OutputPath2`
    Text formatLabel;           ///< `FileFormat`
    Text vaultRoot;             ///< without trailing backslashes
};

/// The names of the files that a conversion of these inputs will save, as far as the patterns tell: up to the first
/// token whose value only the file's version, its card or the CAD application knows. A pattern that climbs out of a
/// folder behind such a token says nothing.
std::vector<ArkOutputNames> outputNames(const OutputPlan& plan, const SelectionRecords& inputs);

/// The extensions in the label of a format such as "Viewpane (*.vprt; *.vasm; *.vdrw)", with their dots.
std::vector<Text> extensionsOf(TextView label);

} // namespace zn
