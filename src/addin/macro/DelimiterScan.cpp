#include "addin/macro/DelimiterScan.h"

#include "addin/macro/MacroText.h"
#include "base/Format.h"

#include <unordered_set>

namespace zn {

namespace {

// No macro comes near these; values that bring themselves in again do. The text may grow at each step by a few
// characters or to its double, so that neither limit alone would end such a scan soon.
constexpr std::size_t largestMacro = std::size_t{4} * 1024 * 1024;
constexpr int mostReturns = 100; ///< of placeholders that were replaced before, brought in by values

/// The name inside a token: without all leading opening and all trailing closing delimiters.
TextView nameOf(TextView token, char16_t open, char16_t close)
{
    token.remove_prefix(std::min(token.find_first_not_of(open), token.size()));
    const std::size_t last = token.find_last_not_of(close);
    return token.substr(0, last == TextView::npos ? 0 : last + 1);
}

} // namespace

OpenDelimiterError::OpenDelimiterError(char16_t opening, std::size_t where)
    : StatusError(E_INVALIDARG, toUtf8(formatText("A \"%s\" in the macro template is never closed.", Text(1, opening))))
    , delimiter(opening)
    , position(where)
{
}

Text DelimiterScan::textOf(TextView name) const
{
    Value value;
    const Status status = lookup(name, value);
    if (status != S_OK && status != S_FALSE)
        throw StatusError(status, toUtf8(formatText("The value of \"%s\" could not be read.", name)));
    if (status == S_FALSE)
        return {};
    Text text = ValueToMacroText(value);
    if (value.type() == ValueType::String)
        replaceAll(text, u"\r\n", u"\"+vbLf+\"");
    return encode ? EncodeForMacroString(text) : text;
}

void DelimiterScan::run(Text& text) const
{
    std::unordered_set<Text> seen;
    int returns = 0;
    std::size_t position = text.find(open);
    while (position != Text::npos) {
        const std::size_t end = text.find(close, position);
        const Text token = end == Text::npos ? Text() : text.substr(position, end - position + 1);
        const Text value = textOf(nameOf(token, open, close));
        replaceAll(text, token, value);
        if (!token.empty() && !seen.insert(token).second)
            ++returns;
        if (text.size() > largestMacro || returns > mostReturns)
            throw StatusError(E_OUTOFMEMORY,
                toUtf8(formatText("The macro grows without end: the value of \"%s\" contains itself.", token)));
        if (token.empty() && value.empty())
            throw OpenDelimiterError(open, position);
        position = text.find(open, position + value.size());
    }
}

} // namespace zn
