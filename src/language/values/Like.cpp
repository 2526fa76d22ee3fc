#include "language/values/Like.h"

#include "language/values/Errors.h"

namespace zn::language {

namespace {

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

struct CharacterList {
    TextView members; ///< between the brackets, without the "!"
    bool negated = false;
    std::size_t end = 0; ///< behind the closing bracket
};

CharacterList readList(TextView pattern, std::size_t at)
{
    CharacterList list;
    const std::size_t close = pattern.find(u']', at + 1);
    if (close == TextView::npos)
        raise(error::invalidPattern);
    list.end = close + 1;
    list.members = pattern.substr(at + 1, close - at - 1);
    if (list.members.size() > 1 && list.members.front() == u'!') {
        list.negated = true;
        list.members.remove_prefix(1);
    }
    return list;
}

bool isMember(const CharacterList& list, char16_t unit)
{
    const TextView members = list.members;
    bool found = false;
    for (std::size_t i = 0; i < members.size(); ++i) {
        // A hyphen stands for itself at either end of the list.
        if (i + 2 < members.size() && members[i + 1] == u'-') {
            if (members[i] > members[i + 2])
                raise(error::invalidPattern);
            found = found || (unit >= members[i] && unit <= members[i + 2]);
            i += 2;
        } else {
            found = found || unit == members[i];
        }
    }
    return found != list.negated;
}

/// Matches one unit at `text[t]` against the pattern's element at `p`, and moves both on.
/// An empty list ("[]") matches the empty text.
bool matchOne(TextView text, std::size_t& t, TextView pattern, std::size_t& p)
{
    if (pattern[p] == u'[') {
        const CharacterList list = readList(pattern, p);
        if (list.members.empty()) {
            p = list.end;
            return true;
        }
        if (t >= text.size() || !isMember(list, text[t]))
            return false;
        p = list.end;
        ++t;
        return true;
    }
    if (t >= text.size())
        return false;
    const bool hit = pattern[p] == u'?' || (pattern[p] == u'#' ? isDigit(text[t]) : pattern[p] == text[t]);
    if (hit) {
        ++t;
        ++p;
    }
    return hit;
}

bool matches(TextView text, TextView pattern)
{
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t starPattern = TextView::npos; // behind the last "*"; only that one ever needs to be tried again
    std::size_t starText = 0;
    while (t < text.size() || p < pattern.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            starPattern = ++p;
            starText = t;
        } else if (p < pattern.size() && matchOne(text, t, pattern, p)) {
            continue;
        } else if (starPattern != TextView::npos && starText < text.size()) {
            t = ++starText;
            p = starPattern;
        } else {
            return false;
        }
    }
    return true;
}

/// A faulty list is an error even where the text has failed to match before it.
void checkLists(TextView pattern)
{
    for (std::size_t p = 0; p < pattern.size(); ++p) {
        if (pattern[p] == u'[') {
            const CharacterList list = readList(pattern, p);
            isMember(list, u' ');
            p = list.end - 1;
        }
    }
}

} // namespace

bool matchesPattern(TextView text, TextView pattern, bool ignoreCase)
{
    checkLists(pattern);
    return ignoreCase ? matches(foldCase(text), foldCase(pattern)) : matches(text, pattern);
}

} // namespace zn::language
