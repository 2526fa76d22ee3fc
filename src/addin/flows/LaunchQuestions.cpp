#include "addin/flows/LaunchQuestions.h"

#include "addin/variables/OutputFormats.h"
#include "addin/variables/TaskVariables.h"

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

constexpr Question assemblyThemeQuestion{
    u"AsmThemeAndViewsChecks", mayChangeTheme, u"theme and views of assemblies (AsmThemeAndViewsChecks)"};
constexpr Question partThemeQuestion{
    u"PartThemeAndViewsChecks", mayChangeTheme, u"theme and views of parts (PartThemeAndViewsChecks)"};

constexpr std::int32_t assemblySelected = 4;
constexpr std::int32_t partSelected = 8;

bool isOpen(const ObjectRef& instance, const Question& question)
{
    return readInteger(instance, question.variable).value_or(question.bits) & question.bits;
}

class Words {
public:
    void add(const char16_t* words) { m_text.append(m_text.empty() ? u"" : u", ").append(words); }
    Text take() { return std::move(m_text); }

private:
    Text m_text;
};

/// A theme that only one kind may change counts if that kind is selected; two that may be changed always count.
void addThemes(Words& words, const ObjectRef& instance, std::int32_t selectedKinds)
{
    const bool assembly = isOpen(instance, assemblyThemeQuestion);
    const bool part = isOpen(instance, partThemeQuestion);
    if (assembly && (part || (selectedKinds & assemblySelected)))
        words.add(assemblyThemeQuestion.words);
    if (part && (assembly || (selectedKinds & partSelected)))
        words.add(partThemeQuestion.words);
}

} // namespace

Text openQuestions(const ObjectRef& instance, std::int32_t selectedKinds)
{
    Words words;
    const OutputFormat* format = findOutputFormat(readText(instance, u"FileFormat").value_or(Text()));
    if (!format || format->code == promptFormatCode)
        words.add(u"the output format (FileFormat)");
    if (readBoolean(instance, u"PromptOutput").value_or(true))
        words.add(u"the output path (PromptOutput)");
    if (isOpen(instance, versionQuestion))
        words.add(versionQuestion.words);
    if (format && format->code == pdf3dFormatCode) {
        addThemes(words, instance, selectedKinds);
        return words.take();
    }
    for (const Question& question : outputQuestions) {
        if (isOpen(instance, question))
            words.add(question.words);
    }
    return words.take();
}

} // namespace zn
