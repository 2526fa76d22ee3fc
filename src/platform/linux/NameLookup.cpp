#include "platform/linux/NameLookup.h"

#include "base/Text.h"

#include <algorithm>
#include <dirent.h>
#include <memory>
#include <optional>
#include <sys/stat.h>

namespace zn {

namespace {

bool isThere(const std::filesystem::path& path)
{
    struct stat ignored { };
    return ::lstat(path.c_str(), &ignored) == 0;
}

bool isAscii(std::string_view name)
{
    return std::all_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Compares names without regard to case. Folders of some thousand files are looked through for every name that
/// isn't there yet, so plain ASCII names, which nearly all are, go without a conversion.
class NameMatcher {
public:
    explicit NameMatcher(const std::string& wanted)
        : m_wanted(wanted)
        , m_ascii(isAscii(wanted))
        , m_text(m_ascii ? Text() : toText(wanted))
    {
    }

    bool fits(std::string_view name) const
    {
        // Two ASCII letters apart from their case differ in one bit only; other folding needs other characters.
        if (m_ascii && isAscii(name))
            return name.size() == m_wanted.size()
                && std::equal(
                    name.begin(), name.end(), m_wanted.begin(), [](char a, char b) { return lower(a) == lower(b); });
        return equalNoCase(toText(name), m_ascii ? toText(m_wanted) : m_text);
    }

private:
    static char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

    const std::string& m_wanted;
    bool m_ascii;
    Text m_text;
};

std::optional<std::string> spellingIn(const std::filesystem::path& folder, const std::string& wanted)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), ::closedir);
    if (!entries)
        return std::nullopt;
    const NameMatcher matcher(wanted);
    std::optional<std::string> found;
    while (const dirent* entry = ::readdir(entries.get())) {
        const std::string_view name = entry->d_name;
        if (matcher.fits(name) && (!found || name < *found))
            found = std::string(name);
    }
    return found;
}

} // namespace

std::filesystem::path findIgnoringCase(const std::filesystem::path& root, const std::string& relative)
{
    if (relative.empty())
        return root;
    std::filesystem::path exact = root / relative;
    if (isThere(exact))
        return exact;
    std::filesystem::path found = root;
    bool searching = true;
    for (const auto& component : std::filesystem::path(relative)) {
        if (searching && !isThere(found / component)) {
            const auto spelling = spellingIn(found, component.string());
            searching = spelling.has_value();
            found /= spelling ? std::filesystem::path(*spelling) : component;
        } else {
            found /= component;
        }
    }
    return found;
}

} // namespace zn
