#pragma once

#include "base/Status.h"
#include "base/Value.h"

#include <functional>

namespace zn {

/// An opening delimiter without a closing one behind it, at which the scan cannot go on.
class OpenDelimiterError : public StatusError {
public:
    OpenDelimiterError(char16_t opening, std::size_t where);
    /// The same with a sentence of whoever knows more about it.
    OpenDelimiterError(const OpenDelimiterError& error, const std::string& sentence)
        : StatusError(error.status(), sentence)
        , delimiter(error.delimiter)
        , position(error.position)
    {
    }

    char16_t delimiter;
    std::size_t position; ///< in the text as it stands at that moment
};

/// One of the two scans over a macro template that resolve the placeholders of a task.
struct DelimiterScan {
    /// Looks a name up: 0 with the value, 1 if there is none; any other status is raised by the scan.
    using Lookup = std::function<Status(TextView name, Value& value)>;

    char16_t open;
    char16_t close;
    /// Whether values pass through `EncodeForMacroString`.
    bool encode;
    Lookup lookup;

    /// Replaces every token from `open` through the first `close` behind it by its value's text, from left to right,
    /// at all of its places at once. A name without a value gives the empty text. Carriage return and line feed in a
    /// text value become `"+vbLf+"`, so that it can stand inside a quoted literal. The inserted text is stepped over
    /// at the place of the scan only. Raises `OpenDelimiterError`, and `E_OUTOFMEMORY` for values that bring
    /// themselves in again without an end.
    void run(Text& text) const;

private:
    Text textOf(TextView name) const;
};

} // namespace zn
