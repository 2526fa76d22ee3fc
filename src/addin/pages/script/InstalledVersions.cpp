#include "addin/pages/script/InstalledVersions.h"

#include <algorithm>

namespace zn {

namespace {

constexpr std::int32_t firstYear = 2008;
/// With which the rest of the product's own name begins, in contrast to its companions' names.
constexpr TextView releases[] = {u"SP", u"Alpha", u"Beta", u"Pre"};

/// Takes the word up to the next blank off the text.
Text takeWord(Text& text)
{
    const std::size_t end = std::min(text.find(u' '), text.size());
    Text word = text.substr(0, end);
    text.erase(0, end + 1);
    return word;
}

} // namespace

std::vector<CadVersion> cadVersions(const std::vector<Text>& productNames)
{
    std::vector<CadVersion> versions;
    for (Text rest : productNames) {
        if (!equalNoCase(takeWord(rest), u"ZENTREL"))
            continue;
        const Text year = takeWord(rest);
        rest = trim(rest);
        if (startsWithNoCase(rest, u"x64")) {
            rest = trim(TextView(rest).substr(3));
            takeWord(rest); // "Edition"
            rest = trim(rest);
        }
        const auto isRelease = [&rest](TextView one) { return rest.starts_with(one); };
        if (std::ranges::none_of(releases, isRelease))
            continue;
        CadVersion version{u"ZENTREL " + year, leadingInteger(year)};
        if (version.year >= firstYear
            && std::ranges::find(versions, version.label, &CadVersion::label) == versions.end())
            versions.push_back(std::move(version));
    }
    return versions;
}

} // namespace zn
