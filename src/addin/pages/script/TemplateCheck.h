#pragma once

#include "base/Text.h"

namespace zn {

/// A mistake in a macro template. `position` and `length` count 16-bit units of the template; `line` and `column` count
/// from 1. The length is at least 1 unless the template is empty.
struct TemplateProblem {
    std::size_t position = 0;
    std::size_t length = 0;
    int line = 0;
    int column = 0;
    Text message;
};

/// The mistakes that the macro language's checker finds in a template, in its order, with the names of the CAD
/// application's object model known. Placeholders count as values of the kind that fits: a mistake that begins at one
/// is left out, since only a run knows its value. A "[" or "{" that is not closed in its line is a mistake too, and so
/// is a character that the macro's code page doesn't have (the first of each line).
/// Does not raise for a faulty template. Safe on any thread.
std::vector<TemplateProblem> checkTemplate(TextView source);

} // namespace zn
