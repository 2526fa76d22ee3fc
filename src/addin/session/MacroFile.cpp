#include "addin/session/MacroFile.h"

#include "base/Paths.h"
#include "base/Status.h"

#include <algorithm>

namespace zn {

namespace {

constexpr std::size_t longestTemporaryFolder = 256;
constexpr TextView temporaryPrefix = u"TFR";
constexpr TextView macroExtension = u".znb";
constexpr TextView unfinishedExtension = u".tmp";

/// One byte for each code unit, as the application's macro engine counts.
std::string macroBytes(Text text)
{
    // The two halves of a character beyond 16 bits would share one substitute.
    std::replace_if(
        text.begin(), text.end(), [](char16_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }, u'?');
    return toCodePage(text);
}

/// The process that wrote the file, by the name; 0 for any other file.
std::int32_t writerOf(const Text& name)
{
    const std::size_t mark = name.find(u'_');
    if (!name.starts_with(temporaryPrefix) || mark == Text::npos)
        return 0;
    const Text number = name.substr(temporaryPrefix.size(), mark - temporaryPrefix.size());
    const bool isNumber = !number.empty() && number.find_first_not_of(u"0123456789") == Text::npos;
    return isNumber && (name.ends_with(macroExtension) || name.ends_with(unfinishedExtension)) ? leadingInteger(number)
                                                                                               : 0;
}

} // namespace

MacroFile writeMacroFile(FileSystem& files, const Text& macroText)
{
    const Text folder = files.temporaryFolder();
    if (folder.size() > longestTemporaryFolder)
        throw StatusError(E_FAIL, "The path of the temporary folder is too long for a macro file.");
    const Text temporary = files.temporaryFile(folder, Text(temporaryPrefix) + numberText(currentProcessId()) + u"_");
    const FileRemoval removal(files, temporary);
    if (const FileResult written = files.writeBytes(temporary, macroBytes(macroText)); !written)
        throw StatusError(E_FAIL, "The macro file could not be written: " + toUtf8(written.reason) + ".");
    const Text macroFile = pathWithExtension(temporary, macroExtension);
    return {macroFile, files.removeFile(macroFile) && files.renameFile(temporary, macroFile)};
}

void removeLeftOverMacros(FileSystem& files, Processes& processes)
{
    const Text folder = files.temporaryFolder();
    for (const Text& name : files.list(folder)) {
        const std::int32_t writer = writerOf(name);
        // Those of other users can't be removed, which is as it should be.
        if (writer > 0 && !processes.open(writer))
            files.removeFile(pathAppend(folder, name));
    }
}

} // namespace zn
