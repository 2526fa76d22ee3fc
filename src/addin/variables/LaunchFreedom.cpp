#include "addin/variables/LaunchFreedom.h"

#include "addin/variables/TaskVariables.h"

namespace zn {

namespace {

bool isOpen(const ObjectRef& task, const char16_t* variable, std::int32_t bits)
{
    return (readInteger(task, variable).value_or(bits) & bits) != 0;
}

} // namespace

LaunchFreedom readLaunchFreedom(const ObjectRef& task, const FindFormat& findFormat)
{
    LaunchFreedom freedom;
    const OutputFormat* format = findFormat(readText(task, u"FileFormat").value_or(Text()));
    freedom.formatCode = format ? format->code : promptFormatCode;
    freedom.format = freedom.formatCode == promptFormatCode;
    freedom.path = readBoolean(task, u"PromptOutput").value_or(true);
    freedom.versions = isOpen(task, u"SourceRefs", userMayChangeVersions);
    freedom.output = {
        .confs = isOpen(task, u"OutputConfs", userMayChange),
        .confFiles = isOpen(task, u"FileConfs", userMayChange),
        .sheets = isOpen(task, u"OutputSheets", userMayChange),
        .sheetFiles = isOpen(task, u"FileSheets", userMayChange),
    };
    freedom.themes = {
        .assembly = isOpen(task, u"AsmThemeAndViewsChecks", userMayChangeTheme | userMayChangeViews),
        .part = isOpen(task, u"PartThemeAndViewsChecks", userMayChangeTheme | userMayChangeViews),
    };
    return freedom;
}

ThemeFreedom themesLeftOpen(const ThemeFreedom& themes, std::int32_t selectedKinds)
{
    return {
        .assembly = themes.assembly && (themes.part || (selectedKinds & assembliesSelected)),
        .part = themes.part && (themes.assembly || (selectedKinds & partsSelected)),
    };
}

Text openQuestions(const LaunchFreedom& freedom, std::int32_t selectedKinds)
{
    const bool is3dPdf = freedom.formatCode == pdf3dFormatCode;
    const ThemeFreedom themes = themesLeftOpen(freedom.themes, selectedKinds);
    const struct {
        bool isOpen;
        const char16_t* words;
    } questions[] = {
        {freedom.format, u"the output format (FileFormat)"},
        {freedom.path, u"the output path (PromptOutput)"},
        {freedom.versions, u"the version of referenced files (SourceRefs)"},
        {is3dPdf && themes.assembly, u"theme and views of assemblies (AsmThemeAndViewsChecks)"},
        {is3dPdf && themes.part, u"theme and views of parts (PartThemeAndViewsChecks)"},
        // Freedom of the grouping alone asks nothing: administrators count on a launch without questions.
        {!is3dPdf && freedom.output.confs, u"the configurations (OutputConfs)"},
        {!is3dPdf && freedom.output.sheets, u"the sheets (OutputSheets)"},
    };
    Text words;
    for (const auto& question : questions) {
        if (question.isOpen)
            words.append(words.empty() ? u"" : u", ").append(question.words);
    }
    return words;
}

} // namespace zn
