#include "addin/installation/ProductTexts.h"

#include "addin/installation/SettingsLight.h"
#include "platform/FileSystem.h"
#include "strings/StringTable.h"

#include <algorithm>

namespace zn {

namespace {

Text textIn(const std::filesystem::path& folder, const std::string& language, const NumberedText& text)
{
    StringTable strings(folder, language);
    const Text* found = strings.find(u"ZNTaskAddIn", u"TS", text.number, text.english);
    return found ? *found : Text(text.english);
}

/// Where the languages lie; empty without an installation.
std::filesystem::path stringFolder(SettingsLight& settings, FileSystem& files)
{
    const Text folder = settings.getPath(PathStringFiles);
    return folder.empty() ? std::filesystem::path() : files.toMachine(folder);
}

} // namespace

Text productText(Registry& registry, FileSystem& files, const NumberedText& text)
{
    SettingsLight settings(registry, files, processEnvironment());
    const std::filesystem::path folder = stringFolder(settings, files);
    return folder.empty() ? Text(text.english) : textIn(folder, toUtf8(settings.getLanguage()), text);
}

std::vector<Text> productTextInAllLanguages(Registry& registry, FileSystem& files, const NumberedText& text)
{
    SettingsLight settings(registry, files, processEnvironment());
    const std::filesystem::path folder = stringFolder(settings, files);
    std::vector<Text> all{text.english};
    std::error_code unreadable; // without any language there is English
    for (const auto& language : std::filesystem::directory_iterator(folder, unreadable)) {
        Text translated = textIn(folder, language.path().filename().string(), text);
        if (std::ranges::find(all, translated) == all.end())
            all.push_back(std::move(translated));
    }
    return all;
}

} // namespace zn
