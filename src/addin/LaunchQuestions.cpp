#include "addin/LaunchQuestions.h"

#include "addin/OutputFormats.h"
#include "addin/TaskVariables.h"

namespace zn {

namespace {

constexpr std::int32_t mayChange = 1;         ///< of sheets and configurations
constexpr std::int32_t mayChangeVersions = 4; ///< of the version rule
constexpr std::int32_t mayChangeTheme = 1 | 8;

/// A set of bits by which an administrator leaves something to the user; an absent variable leaves it, too.
struct Question {
    const char16_t* variable;
    std::int32_t bits;
    const char16_t* words;
};

constexpr Question versionQuestion{u"SourceRefs", mayChangeVersions, u"the version of referenced files (SourceRefs)"};
constexpr Question outputQuestions[] = {
    {u"OutputConfs", mayChange, u"the configurations (OutputConfs)"},
    {u"OutputSheets", mayChange, u"the sheets (OutputSheets)"},
};
constexpr Question pdf3dQuestions[] = {
    {u"AsmThemeAndViewsChecks", mayChangeTheme, u"theme and views of assemblies (AsmThemeAndViewsChecks)"},
    {u"PartThemeAndViewsChecks", mayChangeTheme, u"theme and views of parts (PartThemeAndViewsChecks)"},
};

class Words {
public:
    void add(const char16_t* words) { m_text.append(m_text.empty() ? u"" : u", ").append(words); }
    void addIfOpen(const ObjectRef& instance, const Question& question)
    {
        if (readInteger(instance, question.variable).value_or(question.bits) & question.bits)
            add(question.words);
    }
    Text take() { return std::move(m_text); }

private:
    Text m_text;
};

} // namespace

Text openQuestions(const ObjectRef& instance)
{
    Words words;
    const OutputFormat* format = findOutputFormat(readText(instance, u"FileFormat").value_or(Text()));
    if (!format || format->code == promptFormatCode)
        words.add(u"the output format (FileFormat)");
    if (readBoolean(instance, u"PromptOutput").value_or(true))
        words.add(u"the output path (PromptOutput)");
    words.addIfOpen(instance, versionQuestion);
    const bool is3dPdf = format && format->code == pdf3dFormatCode;
    for (const Question& question : is3dPdf ? pdf3dQuestions : outputQuestions)
        words.addIfOpen(instance, question);
    return words.take();
}

} // namespace zn
