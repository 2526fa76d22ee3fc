#include "strings/StringFile.h"

#include <charconv>
#include <optional>

namespace zn {

namespace {

constexpr std::string_view formatName = "LanFile ";
constexpr int formatVersion = 1;

std::string_view trimmed(std::string_view line)
{
    constexpr std::string_view blanks = " \t\r";
    const auto first = line.find_first_not_of(blanks);
    return first == line.npos ? std::string_view() : line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

/// Takes the next line off the content.
std::string_view takeLine(std::string_view& content)
{
    const auto end = content.find('\n');
    const std::string_view line = content.substr(0, end);
    content.remove_prefix(end == content.npos ? content.size() : end + 1);
    return trimmed(line);
}

std::optional<int> number(std::string_view digits)
{
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return error == std::errc() && end == digits.data() + digits.size() ? std::optional(value) : std::nullopt;
}

/// The text of an entry with its escapes resolved; none for an escape that doesn't exist.
std::optional<std::string> unescaped(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            result += text[i];
            continue;
        }
        switch (++i < text.size() ? text[i] : '\0') {
        case 'n':
            result += '\n';
            break;
        case 't':
            result += '\t';
            break;
        case 's':
            result += ' ';
            break;
        case '\\':
            result += '\\';
            break;
        default:
            return std::nullopt;
        }
    }
    return result;
}

Text checkFirstLine(std::string_view line)
{
    if (!line.starts_with(formatName))
        return u"line 1 on: the file is not a string file, because it does not begin with \"LanFile\".";
    const auto version = number(trimmed(line.substr(formatName.size())));
    if (version != formatVersion)
        return u"line 1 on: the file has another version than this product reads, which is " + numberText(formatVersion)
            + u".";
    return {};
}

/// Reads the lines behind the first one.
class Reader {
public:
    explicit Reader(StringFile& entries)
        : m_entries(entries)
    {
    }

    /// What is wrong with the line; empty if nothing is.
    Text read(std::string_view line)
    {
        if (line.empty() || line.front() == ';')
            return {};
        if (toText(line).find(u'\uFFFD') != Text::npos)
            return u"the line is no UTF-8 text.";
        return line.front() == '[' ? readSection(line) : readEntry(line);
    }

private:
    Text readSection(std::string_view line)
    {
        if (line.back() != ']' || line.size() < 3)
            return u"a section is written as [Name].";
        m_section = toText(line.substr(1, line.size() - 2));
        return {};
    }

    Text readEntry(std::string_view line)
    {
        const auto equals = line.find('=');
        const auto id = number(trimmed(line.substr(0, equals)));
        if (equals == line.npos || !id)
            return u"an entry is written as number = text.";
        if (m_section.empty())
            return u"the entry stands before the first section.";
        const auto text = unescaped(trimmed(line.substr(equals + 1)));
        if (!text)
            return u"a backslash is followed by n, t, s or a backslash.";
        if (!m_entries.add(m_section, *id, toText(*text)))
            return u"the section has an entry of this number already.";
        return {};
    }

    StringFile& m_entries;
    Text m_section;
};

} // namespace

const Text* StringFile::find(TextView section, int id) const
{
    const auto entries = m_sections.find(section);
    if (entries == m_sections.end())
        return nullptr;
    const auto entry = entries->second.find(id);
    return entry == entries->second.end() ? nullptr : &entry->second;
}

bool StringFile::add(const Text& section, int id, Text text)
{
    return m_sections[section].emplace(id, std::move(text)).second;
}

void StringFile::remove(TextView section, int id)
{
    const auto entries = m_sections.find(section);
    if (entries != m_sections.end())
        entries->second.erase(id);
}

ReadStringFile readStringFile(std::string_view content)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (content.starts_with(byteOrderMark))
        content.remove_prefix(byteOrderMark.size());

    ReadStringFile file;
    file.problem = checkFirstLine(takeLine(content));
    Reader reader(file.entries);
    for (int line = 2; file.problem.empty() && !content.empty(); ++line) {
        const Text wrong = reader.read(takeLine(content));
        if (!wrong.empty())
            file.problem = u"line " + numberText(line) + u" on: " + wrong;
    }
    return file;
}

} // namespace zn
