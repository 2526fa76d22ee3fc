#include "language/objects/Arguments.h"
#include "language/objects/OwnClasses.h"
#include "language/objects/RegExpPattern.h"

#include <memory>
#include <unicode/regex.h>

namespace zn::language {

namespace {

constexpr std::int32_t badPattern = 5017;
/// What ICU counts as about a thousandth of a second each: a pattern may take longer than anybody waits.
constexpr std::int32_t longestSearch = 10'000;

/// Where a match or a group of it begins and ends; -1 for a group that took no part.
struct Range {
    std::int32_t first = -1;
    std::int32_t end = -1;
};
using Groups = std::vector<Range>; ///< the whole match first

Value cut(const Text& text, Range range)
{
    if (range.first < 0)
        return {};
    return text.substr(static_cast<std::size_t>(range.first), static_cast<std::size_t>(range.end - range.first));
}

/// Values by their number from 0 on.
class ValueList : public DispatchObject {
public:
    ValueList(TextView typeName, std::vector<Value> values)
        : m_typeName(typeName)
        , m_values(std::move(values))
    {
    }

    Text typeName() const override { return m_typeName; }

    Value invoke(MemberCall& call) override
    {
        if (equalNoCase(call.name, u"Count"))
            return static_cast<std::int32_t>(m_values.size());
        if (equalNoCase(call.name, u"_NewEnum"))
            return Value::arrayOf(m_values);
        if (!call.name.empty() && !equalNoCase(call.name, u"Item"))
            raise(error::memberMissing);
        const std::int32_t index = longOf(ArgumentList(call, {u"Index"}).required(0));
        if (index < 0 || static_cast<std::size_t>(index) >= m_values.size())
            raise(error::invalidCall);
        return m_values[static_cast<std::size_t>(index)];
    }

private:
    Text m_typeName;
    std::vector<Value> m_values;
};

class Match : public DispatchObject {
public:
    Match(const Text& text, const Groups& groups)
        : m_first(groups.front().first)
        , m_value(*cut(text, groups.front()).get<Text>())
    {
        std::vector<Value> parts;
        for (std::size_t i = 1; i < groups.size(); ++i)
            parts.push_back(cut(text, groups[i]));
        m_parts = std::make_shared<ValueList>(u"SubMatches", std::move(parts));
    }

    Text typeName() const override { return u"Match"; }

    Value invoke(MemberCall& call) override
    {
        if (call.name.empty() || equalNoCase(call.name, u"Value"))
            return m_value;
        if (equalNoCase(call.name, u"FirstIndex"))
            return m_first;
        if (equalNoCase(call.name, u"Length"))
            return static_cast<std::int32_t>(m_value.size());
        if (!equalNoCase(call.name, u"SubMatches"))
            raise(error::memberMissing);
        return call.arguments.empty() ? Value(m_parts) : invokeParts(call);
    }

private:
    Value invokeParts(const MemberCall& call) const
    {
        MemberCall item{{}, MemberUse::Call, call.arguments, {}};
        return m_parts->invoke(item);
    }

    std::int32_t m_first;
    Text m_value;
    DispatchRef m_parts;
};

/// What a replacement text stands for at a match: `$1`, `$&`, `` $` ``, `$'` and `$$`.
void appendReplacement(Text& out, const Text& replacement, const Text& text, const Groups& groups)
{
    const auto digit = [&](std::size_t at) {
        return at < replacement.size() && replacement[at] >= u'0' && replacement[at] <= u'9' ? replacement[at] - u'0'
                                                                                             : -1;
    };
    const auto append = [&](Range range) {
        if (range.first >= 0)
            out.append(text, static_cast<std::size_t>(range.first), static_cast<std::size_t>(range.end - range.first));
    };
    for (std::size_t i = 0; i < replacement.size(); ++i) {
        const char16_t next = i + 1 < replacement.size() ? replacement[i + 1] : u'\0';
        if (replacement[i] != u'$') {
            out.push_back(replacement[i]);
        } else if (next == u'$') {
            out.push_back(u'$');
            ++i;
        } else if (next == u'&') {
            append(groups.front());
            ++i;
        } else if (next == u'`') {
            append({0, groups.front().first});
            ++i;
        } else if (next == u'\'') {
            append({groups.front().end, static_cast<std::int32_t>(text.size())});
            ++i;
        } else if (int group = digit(i + 1); group >= 0) {
            ++i;
            const int two = group * 10 + digit(i + 1);
            if (digit(i + 1) >= 0 && two >= 1 && static_cast<std::size_t>(two) < groups.size()) {
                group = two;
                ++i;
            }
            if (group >= 1 && static_cast<std::size_t>(group) < groups.size())
                append(groups[static_cast<std::size_t>(group)]);
            else
                out.append({u'$', replacement[i]});
        } else {
            out.push_back(u'$');
        }
    }
}

class RegExp : public DispatchObject {
public:
    Text typeName() const override { return u"IRegExp2"; }

    Value invoke(MemberCall& call) override
    {
        if (equalNoCase(call.name, u"Pattern"))
            return property(call, m_pattern);
        if (equalNoCase(call.name, u"Global"))
            return property(call, m_global);
        if (equalNoCase(call.name, u"IgnoreCase"))
            return property(call, m_ignoreCase);
        if (equalNoCase(call.name, u"MultiLine"))
            return property(call, m_multiLine);
        if (equalNoCase(call.name, u"Test"))
            return Value(!matches(ArgumentList(call, {u"sourceString"}).text(0), false).empty());
        if (equalNoCase(call.name, u"Execute"))
            return execute(ArgumentList(call, {u"sourceString"}).text(0));
        if (equalNoCase(call.name, u"Replace")) {
            const ArgumentList given(call, {u"sourceString", u"replaceVar"});
            return replaced(given.text(0), given.text(1));
        }
        raise(error::memberMissing);
    }

private:
    Value property(const MemberCall& call, Text& text)
    {
        if (call.use == MemberUse::Call)
            return text;
        text = textOf(call.arguments.back());
        m_compiled.reset();
        return {};
    }

    Value property(const MemberCall& call, bool& flag)
    {
        if (call.use == MemberUse::Call)
            return Value(flag);
        flag = truthOf(call.arguments.back());
        m_compiled.reset();
        return {};
    }

    const icu::RegexPattern& compiled()
    {
        if (m_compiled)
            return *m_compiled;
        const Text pattern = icuPattern(m_pattern, m_multiLine);
        UErrorCode error = U_ZERO_ERROR;
        UParseError place;
        const std::uint32_t flags
            = UREGEX_UNIX_LINES | (m_ignoreCase ? UREGEX_CASE_INSENSITIVE : 0) | (m_multiLine ? UREGEX_MULTILINE : 0);
        m_compiled.reset(icu::RegexPattern::compile(
            icu::UnicodeString(false, pattern.data(), static_cast<std::int32_t>(pattern.size())), flags, place, error));
        if (U_FAILURE(error)) {
            m_compiled.reset();
            raise(badPattern, u"Syntax error in regular expression");
        }
        return *m_compiled;
    }

    std::vector<Groups> matches(const Text& text, bool all)
    {
        std::vector<Groups> found;
        UErrorCode error = U_ZERO_ERROR;
        const icu::UnicodeString searched(false, text.data(), static_cast<std::int32_t>(text.size()));
        const std::unique_ptr<icu::RegexMatcher> matcher(compiled().matcher(searched, error));
        if (U_FAILURE(error))
            raise(error::outOfMemory);
        matcher->setTimeLimit(longestSearch, error);
        while (matcher->find(error) && U_SUCCESS(error)) {
            Groups groups;
            for (std::int32_t group = 0; group <= matcher->groupCount(); ++group)
                groups.push_back({matcher->start(group, error), matcher->end(group, error)});
            found.push_back(std::move(groups));
            if (!all)
                break;
        }
        if (U_FAILURE(error))
            raise(error::invalidCall, u"The regular expression takes too long on this text");
        return found;
    }

    Value execute(const Text& text)
    {
        std::vector<Value> list;
        for (const Groups& groups : matches(text, m_global))
            list.emplace_back(DispatchRef(std::make_shared<Match>(text, groups)));
        return Value(DispatchRef(std::make_shared<ValueList>(u"IMatchCollection2", std::move(list))));
    }

    Value replaced(const Text& text, const Text& replacement)
    {
        Text out;
        std::size_t at = 0;
        for (const Groups& groups : matches(text, m_global)) {
            out.append(text, at, static_cast<std::size_t>(groups.front().first) - at);
            appendReplacement(out, replacement, text, groups);
            at = static_cast<std::size_t>(groups.front().end);
            if (out.size() > longestText)
                raise(error::outOfTextSpace);
        }
        out.append(text, at, Text::npos);
        return out;
    }

    Text m_pattern;
    bool m_global = false;
    bool m_ignoreCase = false;
    bool m_multiLine = false;
    std::unique_ptr<icu::RegexPattern> m_compiled;
};

} // namespace

DispatchRef makeRegExp() { return std::make_shared<RegExp>(); }

} // namespace zn::language
