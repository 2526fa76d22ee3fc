#pragma once

#include <filesystem>
#include <string>

namespace zn::zentrel {

/// What a STEP or IGES text that the kernel wrote says of the model's numbers. A damaged document may hold points at
/// infinity or directions of no length; the kernel writes them as words that no reader takes for numbers.
enum class TextNumbers {
    Plain,
    Huge, ///< one of 1e100 or more, which a sound model has at most where a surface has no end
    None, ///< INF or NAN in place of one
};

TextNumbers numbersOf(const std::string& text);

/// Raises `Kernel` for `None`, and gives the text back.
std::string requireNumbers(std::string text, const std::filesystem::path& file);

} // namespace zn::zentrel
