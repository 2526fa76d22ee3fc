#include "addin/variables/LaunchFreedom.h"

#include "addin/variables/TaskVariables.h"

#include <algorithm>
#include <span>
#include <vector>

namespace zn {

namespace {

bool isOpen(const ObjectRef& task, const char16_t* variable, std::int32_t bits)
{
    return (readInteger(task, variable).value_or(bits) & bits) != 0;
}

/// A choice of a number's bits, as the pages name it.
struct Choice {
    const char16_t* words;
    std::int32_t bit; ///< 0 for whatever is left
};
constexpr Choice noChoices[] = {{nullptr, 0}};
constexpr Choice versionChoices[] = {{u"the one to which is referred", 1}, {u"the latest", 0}};
constexpr Choice outputChoices[] = {{u"those that are named", 8}, {u"the last active", 4}, {u"all", 0}};

struct Question {
    bool isOpen;
    const char16_t* words;
    const char16_t* freedom;                     ///< the variable that leaves it open
    const char16_t* answer;                      ///< the variable that holds what is chosen
    std::span<const Choice> choices = noChoices; ///< of an answer that is a number
};

Text answerTo(const Question& question, const ObjectRef& task)
{
    for (const Choice& choice : question.choices) {
        if (choice.words && (choice.bit == 0 || (readInteger(task, question.answer).value_or(0) & choice.bit) != 0))
            return choice.words;
    }
    const Text text = readText(task, question.answer).value_or(Text());
    return text.empty() ? u"none" : text;
}

std::vector<Question> questionsOf(const LaunchFreedom& freedom, std::int32_t selectedKinds)
{
    const bool is3dPdf = freedom.formatCode == pdf3dFormatCode;
    const ThemeFreedom themes = themesLeftOpen(freedom.themes, selectedKinds);
    const Question all[] = {
        {freedom.format, u"the output format", u"FileFormat", u"FileFormat"},
        {freedom.path, u"the output path", u"PromptOutput", u"OutputPath"},
        {freedom.versions, u"the version of referenced files", u"SourceRefs", u"SourceRefs", versionChoices},
        {is3dPdf && themes.assembly, u"theme and views of assemblies", u"AsmThemeAndViewsChecks", u"Asm3DPDFThemePath"},
        {is3dPdf && themes.part, u"theme and views of parts", u"PartThemeAndViewsChecks", u"Part3DPDFThemePath"},
        // Freedom of the grouping alone asks nothing: administrators count on a launch without questions.
        {!is3dPdf && freedom.output.confs, u"the configurations", u"OutputConfs", u"OutputConfs", outputChoices},
        {!is3dPdf && freedom.output.sheets, u"the sheets", u"OutputSheets", u"OutputSheets", outputChoices},
    };
    std::vector<Question> open;
    std::copy_if(std::begin(all), std::end(all), std::back_inserter(open),
        [](const Question& question) { return question.isOpen; });
    return open;
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
    Text words;
    for (const Question& question : questionsOf(freedom, selectedKinds))
        words.append(words.empty() ? u"" : u", ").append(question.words).append(u" (").append(question.freedom) += u')';
    return words;
}

Text answersOf(const ObjectRef& task, const LaunchFreedom& freedom, std::int32_t selectedKinds)
{
    Text words;
    for (const Question& question : questionsOf(freedom, selectedKinds)) {
        words.append(words.empty() ? u"" : u", ").append(question.words).append(u": ");
        words += answerTo(question, task);
    }
    return words;
}

} // namespace zn
