#include "addin/variables/TaskVariables.h"
#include "tests/support/Files.h"
#include "tests/support/windows/Windows.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <QComboBox>
#include <regex>
#include <set>

namespace zn::test {
namespace {

const std::filesystem::path sources = ZN_SOURCE_DIR "/src";
const std::filesystem::path german = ZN_SOURCE_DIR "/resources/LanFiles/DE";

/// The code that shows windows, file by file.
std::vector<std::filesystem::path> windowSources()
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sources / "addin"))
        if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
            files.push_back(entry.path());
    return files;
}

/// All texts that the windows ask for in German, with all their states.
const AskedTexts& askedByWindows()
{
    static const AskedTexts all = [] {
        AskedTexts asked;
        for (const WindowCase& window : allWindows()) {
            Desk desk(u"DE");
            window.open(desk, [](QWidget&) {});
            asked.merge(desk.asked);
        }
        return asked;
    }();
    return all;
}

/// The entries of the German files.
std::set<TextKey> germanEntries()
{
    static const std::regex entry(R"((\d+) = .*)");
    std::set<TextKey> keys;
    for (const auto& file : std::filesystem::directory_iterator(german)) {
        std::ifstream stream(file.path());
        Text section;
        for (std::string line; std::getline(stream, line);) {
            std::smatch match;
            if (line.starts_with('['))
                section = toText(line.substr(1, line.size() - 2));
            else if (std::regex_match(line, match, entry))
                keys.emplace(toText(file.path().stem().string()), section, std::stoi(match[1]));
        }
    }
    return keys;
}

/// As a string file has it, so that a missing entry can be copied from the failure and translated.
std::string shown(const TextKey& key, const Text& text = {})
{
    const auto& [file, section, id] = key;
    return toUtf8(file) + " [" + toUtf8(section) + "] " + std::to_string(id) + " = " + toUtf8(text);
}

TEST(GermanTest, HasEveryTextThatTheWindowsAskFor)
{
    std::string missing;
    for (const auto& [key, text] : askedByWindows()) {
        if (!text.found)
            missing += shown(key, text.english) + '\n';
    }
    EXPECT_EQ(missing, "");
}

/// Which string files the texts of a source file stand in.
std::set<Text> stringFilesOf(const std::filesystem::path& source)
{
    if (source.filename() == "ErrorTexts.cpp")
        return {u"ArkInterface", u"Error Messages"};
    if (source.parent_path().filename() == "lexmgr")
        return {u"LexMgr"};
    return {u"ZNTaskAddIn", u"VariableMgr"};
}

/// Whether the texts of a source file stand in the section "TS" alone, since no window asks for them.
bool hasNoWindow(const std::filesystem::path& source)
{
    const auto folder = source.parent_path().filename();
    return folder == "flows" || folder == "session" || folder == "variables";
}

using Lookups = std::multimap<int, std::string>;

/// Numbers that the code gives a name.
std::map<std::string, int> namedNumbers(const std::string& code)
{
    static const std::regex name(R"(\b([A-Za-z]\w*) = (\d+)\b)");
    std::map<std::string, int> numbers;
    for (std::sregex_iterator match(code.begin(), code.end(), name), end; match != end; ++match)
        numbers[(*match)[1]] = std::stoi((*match)[2]);
    return numbers;
}

/// Texts that windows ask for on occasion only, such as the sentences of message boxes, stand in the code as a number,
/// or the name of one, and the English text. A name that just follows another in its list is a control's, which the
/// window asks for when it opens.
Lookups lookupsOf(const std::string& code, const std::map<std::string, int>& names)
{
    static const std::regex byNumber(R"(\b([1-9]\d{0,3}),\s*u\"((?:[^\"\\]|\\.)+)\")");
    static const std::regex byName(R"(\b(?:own|message|column|text|ts)\(\s*([A-Za-z]\w*),\s*u\"((?:[^\"\\]|\\.)+)\")");
    Lookups lookups;
    for (std::sregex_iterator match(code.begin(), code.end(), byNumber), end; match != end; ++match)
        lookups.emplace(std::stoi((*match)[1]), (*match)[2]);
    for (std::sregex_iterator match(code.begin(), code.end(), byName), end; match != end; ++match) {
        const auto number = names.find((*match)[1]);
        if (number != names.end())
            lookups.emplace(number->second, (*match)[2]);
    }
    return lookups;
}

TEST(GermanTest, HasEveryTextOfTheCode)
{
    std::map<Text, std::set<int>> numbers;
    std::set<int> numbersWithoutWindow;
    for (const auto& [file, section, id] : germanEntries()) {
        numbers[file].insert(id);
        if (file == u"ZNTaskAddIn" && section == u"TS")
            numbersWithoutWindow.insert(id);
    }
    std::map<std::filesystem::path, std::string> codeOfFolder;
    for (const auto& file : windowSources())
        codeOfFolder[file.parent_path()] += readFile(file);
    std::map<std::filesystem::path, std::map<std::string, int>> namesOfFolder;
    for (const auto& [folder, code] : codeOfFolder)
        namesOfFolder[folder] = namedNumbers(code);

    std::string missing;
    for (const auto& file : windowSources()) {
        if (file.filename() == "PaperSizes.h" || file.filename() == "SheetMetalBits.cpp")
            continue; // names that are the same in every language
        const std::set<Text> stringFiles = stringFilesOf(file);
        for (const auto& [id, english] : lookupsOf(readFile(file), namesOfFolder[file.parent_path()])) {
            const bool isThere = hasNoWindow(file)
                ? numbersWithoutWindow.contains(id)
                : std::any_of(stringFiles.begin(), stringFiles.end(),
                    [&, id = id](const Text& stringFile) { return numbers[stringFile].contains(id); });
            if (!isThere)
                missing += file.filename().string() + ": " + std::to_string(id) + " = " + english + '\n';
        }
    }
    EXPECT_EQ(missing, "");
}

TEST(GermanTest, HoldsNoTextThatNobodyAsksFor)
{
    static const std::regex number(R"(\b\d{1,4}\b)");
    std::set<int> inCode;
    for (const auto& file : windowSources()) {
        const std::string code = readFile(file);
        for (std::sregex_iterator match(code.begin(), code.end(), number), end; match != end; ++match)
            inCode.insert(std::stoi(match->str()));
    }
    std::string superfluous;
    for (const TextKey& key : germanEntries()) {
        if (std::get<0>(key) == u"Arkin")
            continue; // the host's windows, which have a list of their texts
        if (!askedByWindows().contains(key) && !inCode.contains(std::get<int>(key)))
            superfluous += shown(key) + '\n';
    }
    EXPECT_EQ(superfluous, "");
}

/// A task is read on machines that speak another language.
TEST(GermanTest, StoresAFormatByItsEnglishLabel)
{
    Desk desk(u"DE");
    const PageSetting setting = desk.setting(TaskKind::Conversion);
    const auto page = desk.pages.makeConversionPage(setting, false);
    page->load(setting.task);
    auto* formats = QWidget::find(static_cast<WId>(page->window()))->findChild<QComboBox*>("outputFormat");
    const std::pair<const char*, const char16_t*> rows[] = {
        {"<Benutzer fragen>", u"<Prompt the user>"},
        {"Parasolid bin\u00E4r (*.x_b)", u"Parasolid Binary (*.x_b)"},
    };
    for (const auto& [shownLabel, storedLabel] : rows) {
        formats->setCurrentText(shownLabel);
        ASSERT_TRUE(page->save(setting.task));
        EXPECT_EQ(readText(setting.task, u"FileFormat"), storedLabel);
        formats->setCurrentIndex(5);
        page->load(setting.task);
        EXPECT_EQ(formats->currentText(), shownLabel);
    }
}

} // namespace
} // namespace zn::test
