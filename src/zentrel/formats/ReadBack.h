#pragma once

#include "zentrel/model/Model.h"

#include <string>

/// Looking at what a writer made, in a process of the kernel's. It takes about as long as reading the file does, so it
/// is for models that give reason to doubt.
namespace zn::zentrel {

/// Whether a body has a fault, or edges that are off their surfaces by more than a thousandth of the model's diagonal.
bool isDoubtful(const Model& model);

/// How the shape that a STEP or IGES text gives differs from the model, as the end of a sentence ("reads back with …");
/// empty if it doesn't. Raises what the kernel raises.
std::string faultOfStep(const std::string& text, const Model& model);
std::string faultOfIges(const std::string& text, const Model& model);

} // namespace zn::zentrel
