#include "tests/support/windows/LongTexts.h"

#include <fstream>

namespace zn::test {

namespace {

/// Words of ordinary length, so that lines break as they do in a language.
Text lengthened(const Text& english)
{
    constexpr TextView filler = u" weitere lange Worte dazu und noch mehr davon bis es reicht";
    const std::size_t more = (english.size() * 4 + 9) / 10;
    Text longer = english;
    for (std::size_t i = 0; i < more; ++i)
        longer += filler[i % filler.size()];
    return longer;
}

std::string escaped(const Text& text)
{
    Text result = text;
    replaceAll(result, u"\\", u"\\\\");
    replaceAll(result, u"\n", u"\\n");
    replaceAll(result, u"\t", u"\\t");
    if (result.ends_with(u' '))
        result.replace(result.size() - 1, 1, u"\\s");
    return toUtf8(result);
}

} // namespace

void writeLongTexts(const AskedTexts& english, const std::filesystem::path& stringFolder)
{
    const std::filesystem::path folder = stringFolder / "XX";
    std::filesystem::create_directories(folder);
    std::map<Text, std::ofstream> files;
    for (const auto& [key, text] : english) {
        const auto& [file, section, id] = key;
        if (!files.contains(file))
            (files[file] = std::ofstream(folder / (toUtf8(file) + ".lan"))) << "LanFile 1\n";
        files[file] << '[' << toUtf8(section) << "]\n" << id << " = " << escaped(lengthened(text.english)) << '\n';
    }
}

} // namespace zn::test
