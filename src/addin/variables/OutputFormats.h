#pragma once

#include "base/Text.h"

#include <cstdint>
#include <span>

/// The system's one list of output formats.
namespace zn {

/// "The user is asked at the launch", the format with the code 0.
inline constexpr std::int32_t promptFormatCode = 0;
inline constexpr std::int32_t pdf3dFormatCode = 1;

struct OutputFormat {
    std::int32_t code;         ///< 0 to 22; the row's place
    std::int32_t stringNumber; ///< of the label, in the section "TS"
    const char16_t* label;     ///< what `FileFormat` holds, in English
    bool hasOptions;           ///< has a dialog of its own options
};

/// All formats in the order of their codes, the prompt first.
std::span<const OutputFormat> outputFormats();
/// The format of that label, compared without regard to case; null if there is none.
const OutputFormat* findOutputFormat(TextView label);

} // namespace zn
