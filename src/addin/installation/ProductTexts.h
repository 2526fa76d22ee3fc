#pragma once

#include "base/Text.h"

#include <vector>

namespace zn {

class FileSystem;
class Registry;

/// A text of the product: its number in the section "TS" of the string file "ZNTaskAddIn", and its English.
struct NumberedText {
    int number;
    const char16_t* english;
};

/// The text in the installation's language, as of now; English where the language has none. For what has no window and
/// so no library of texts: a run on a worker. Raises nothing but exhausted memory.
Text productText(Registry& registry, FileSystem& files, const NumberedText& text);

/// The same text in every language that the installation has string files for, English first.
std::vector<Text> productTextInAllLanguages(Registry& registry, FileSystem& files, const NumberedText& text);

} // namespace zn
