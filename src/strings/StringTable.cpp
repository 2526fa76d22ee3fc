#include "strings/StringTable.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

namespace zn {

namespace {

/// A name that the registry or a caller gives becomes part of a path only if it is a plain one.
bool isPlainName(std::string_view name)
{
    return !name.empty() && name.find_first_of("/\\") == name.npos && name.front() != '.';
}

/// The conversion letters of a printf format in their order: "%s of %03d" gives "sd".
Text conversions(TextView format)
{
    constexpr TextView betweenPercentAndLetter = u"0123456789.-+#$*lh";
    constexpr TextView letters = u"diouxXeEfgGcs";
    Text found;
    for (std::size_t i = format.find(u'%'); i != format.npos; i = format.find(u'%', i)) {
        const std::size_t letter = format.find_first_not_of(betweenPercentAndLetter, i + 1);
        if (letter == format.npos)
            break;
        if (letters.find(format[letter]) != letters.npos)
            found += format[letter];
        i = letter + 1;
    }
    return found;
}

} // namespace

StringTable::StringTable(const std::filesystem::path& folder, const std::string& language)
{
    if (isPlainName(language))
        m_folder = folder / language;
}

const Text* StringTable::find(TextView file, TextView section, int id, TextView defaultText)
{
    StringFile& entries = entriesOf(file);
    const Text* text = entries.find(section, id);
    if (!text || conversions(*text) == conversions(defaultText))
        return text;
    entries.remove(section, id);
    m_problems.push_back(u"The string file \"" + Text(file)
        + u".lan\" has other placeholders than the English text in entry " + numberText(id) + u" of section \""
        + Text(section) + u"\", so the English text is shown.");
    return nullptr;
}

std::vector<Text> StringTable::takeProblems() { return std::exchange(m_problems, {}); }

StringFile& StringTable::entriesOf(TextView file)
{
    const auto known = m_files.find(file);
    return known != m_files.end() ? known->second : m_files.emplace(file, read(file)).first->second;
}

/// A language without this file is no fault: its texts are English.
StringFile StringTable::read(TextView file)
{
    const std::string name = toUtf8(file);
    if (m_folder.empty() || !isPlainName(name))
        return {};
    const std::filesystem::path path = m_folder / (name + ".lan");
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return {};
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    ReadStringFile result = readStringFile(content);
    if (!result.problem.empty())
        m_problems.push_back(u"The string file \"" + toText(path.string()) + u"\" cannot be read from " + result.problem
            + u" Texts that it lacks are shown in English. Install the language files of this product again.");
    return std::move(result.entries);
}

} // namespace zn
