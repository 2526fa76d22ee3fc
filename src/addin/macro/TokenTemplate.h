#pragma once

#include "base/Text.h"

#include <optional>
#include <span>
#include <vector>

namespace zn {

/// A text whose tokens are replaced one after the other, for many sets of values. The meaning is that of plain replace
/// passes, one a token in the order given, each over the text as the pass before left it, so that a value may bring in
/// a later token. The places of the tokens are found once; a set of values that can't form a new token, which is
/// nearly every one, is then filled in by a single pass.
class TokenTemplate {
public:
    TokenTemplate() = default;
    /// `tokens` are not empty.
    TokenTemplate(Text text, std::vector<Text> tokens);

    /// Appends the text with the values to `out`. `values` has one element a token; none leaves the token standing.
    void appendTo(Text& out, std::span<const std::optional<Text>> values) const;

    const std::vector<Text>& tokens() const { return m_tokens; }

private:
    struct Place {
        std::size_t position;
        std::size_t token;
    };

    bool findPlaces();
    bool canBeginToken(std::size_t start, std::size_t end) const;
    bool fitSinglePass(std::span<const std::optional<Text>> values) const;

    Text m_text;
    std::vector<Text> m_tokens;
    Text m_firstUnits;           ///< with which a token begins
    std::vector<Place> m_places; ///< in the order of the text
    bool m_singlePass = false;
};

} // namespace zn
