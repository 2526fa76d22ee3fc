#pragma once

#include "base/Format.h"

namespace zn {

/// A text built from a number, for formats that take texts only.
class StrComp {
public:
    /// `width` of at least 1 pads the number to that many characters, with zeros or with blanks.
    explicit StrComp(std::int64_t number, int width = 0, bool zeroPadded = false)
        : m_text(width < 1 ? numberText(number)
                           : formatText(toUtf8(formatText("%%%s%dd", Text(zeroPadded ? u"0" : u""), width)).c_str(),
                               static_cast<long long>(number)))
    {
    }

    const Text& text() const { return m_text; }

private:
    Text m_text;
};

} // namespace zn
