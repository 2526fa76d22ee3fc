#pragma once

#include "base/Text.h"

namespace zn {

/// Some units of a macro's source.
struct SourceRange {
    std::size_t position = 0;
    std::size_t length = 0;

    bool touches(std::size_t place) const { return position <= place && place <= position + length; }
    bool operator==(const SourceRange&) const = default;
};

/// The words that open, divide and close one block, in the order of the source: "If", "ElseIf", "Else", "End If".
struct MacroBlock {
    std::vector<SourceRange> words;
    bool closed = false;
};

/// The blocks of a source, inner ones before the ones around them. A closing word without a block is passed over.
std::vector<MacroBlock> macroBlocks(TextView source);

/// The block one of whose words touches the place; the innermost one. Null if there is none.
const MacroBlock* blockAt(const std::vector<MacroBlock>& blocks, std::size_t place);

/// Whether a line leaves a block open, so that the next line is indented more.
bool opensBlock(TextView line);

} // namespace zn
