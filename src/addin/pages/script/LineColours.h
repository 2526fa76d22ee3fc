#pragma once

#include "base/Text.h"

namespace zn {

/// What a part of a macro template's line is, for its colour.
enum class SourcePart : std::uint8_t {
    Keyword,
    TypeName,
    Directive,
    Comment,
    String,
    Number,
    HostPlaceholder, ///< the placeholders lie above all others, also in texts and comments
    TaskPlaceholder,
    FilePlaceholder,
    CardPlaceholder,
};
inline constexpr std::size_t sourcePartCount = 10;

struct ColouredPart {
    SourcePart part;
    std::size_t position; ///< in the line
    std::size_t length;
    bool operator==(const ColouredPart&) const = default;
};

struct ColouredLine {
    std::vector<ColouredPart> parts; ///< later ones lie above earlier ones
    bool commentGoesOn = false;      ///< the next line is a part of this one's comment
};

/// The coloured parts of one line without its line end. `inComment` tells that the line before goes on as a comment.
ColouredLine colouredLine(TextView line, bool inComment);

} // namespace zn
