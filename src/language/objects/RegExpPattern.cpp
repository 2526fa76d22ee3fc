#include "language/objects/RegExpPattern.h"

namespace zn::language {

namespace {

struct Escape {
    char16_t letter;
    TextView outside;
    TextView inside; ///< of brackets
};

constexpr Escape escapes[] = {
    {u'd', u"[0-9]", u"0-9"},
    {u'D', u"[^0-9]", u"[^0-9]"},
    {u'w', u"[A-Za-z0-9_]", u"A-Za-z0-9_"},
    {u'W', u"[^A-Za-z0-9_]", u"[^A-Za-z0-9_]"},
    {u's', u"[ \\f\\n\\r\\t\\u000B]", u" \\f\\n\\r\\t\\u000B"},
    {u'S', u"[^ \\f\\n\\r\\t\\u000B]", u"[^ \\f\\n\\r\\t\\u000B]"},
    {u'v', u"\\u000B", u"\\u000B"},
    {u'b', u"(?:(?<=[A-Za-z0-9_])(?![A-Za-z0-9_])|(?<![A-Za-z0-9_])(?=[A-Za-z0-9_]))", u"\\u0008"},
    {u'B', u"(?:(?<=[A-Za-z0-9_])(?=[A-Za-z0-9_])|(?<![A-Za-z0-9_])(?![A-Za-z0-9_]))", u"B"},
};

bool isLetter(char16_t unit) { return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z'); }

/// What stands behind a backslash.
void appendEscape(Text& out, char16_t unit, bool inBrackets)
{
    for (const Escape& escape : escapes)
        if (escape.letter == unit) {
            out += inBrackets ? escape.inside : escape.outside;
            return;
        }
    constexpr TextView shared = u"fnrtxuc"; // mean the same to both
    const bool keeps = !isLetter(unit) || shared.find(unit) != TextView::npos;
    if (keeps)
        out.push_back(u'\\');
    out.push_back(unit); // any other letter stands for itself
}

} // namespace

Text icuPattern(TextView pattern, bool multiLine)
{
    Text out;
    bool inBrackets = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char16_t unit = pattern[i];
        if (unit == u'\\' && i + 1 < pattern.size()) {
            appendEscape(out, pattern[++i], inBrackets);
        } else if (inBrackets) {
            inBrackets = unit != u']';
            if (unit == u'[' || unit == u'&')
                out.push_back(u'\\');
            out.push_back(unit);
        } else if (unit == u'[') {
            inBrackets = true;
            out.push_back(unit);
            if (i + 1 < pattern.size() && pattern[i + 1] == u'^') {
                out.push_back(u'^');
                ++i;
            }
        } else if (unit == u'$' && !multiLine) {
            out += u"\\z";
        } else {
            out.push_back(unit);
        }
    }
    return out;
}

} // namespace zn::language
