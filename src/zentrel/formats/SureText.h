#pragma once

#include "zentrel/kernel/KernelChild.h"
#include "zentrel/kernel/Remarks.h"
#include "zentrel/model/Model.h"

#include <functional>

namespace zn::zentrel {

/// One way of writing a model into a file's text.
struct TextWay {
    const char* words; ///< what it does, for the sentence "… was written with <words>"
    std::function<std::string()> make;
};

/// How the shape that a text gives differs from the model, as the end of a sentence; empty if it doesn't.
using FaultOfText = std::string (*)(const std::string& text, const Model& model);

/// The text that the first way makes. Where the model (`isDoubtful`) or a number of the text gives reason to doubt, it
/// is read back, and if it has a fault the other ways are tried until one reads back as what the model is; remarks tell
/// which, or that none was better, and then the first text stays. Each way and each reading has a process of the
/// kernel's of its own. Raises what the first way raises, and `Kernel` for a text with numbers that are none.
std::string textThatReadsBack(const Model& model, const KernelTask& task, const std::vector<TextWay>& ways,
    FaultOfText faultOf, Remarks& remarks);

/// The body's shape as the kernel's healing makes it.
TopoDS_Shape healed(const Body& body);

} // namespace zn::zentrel
