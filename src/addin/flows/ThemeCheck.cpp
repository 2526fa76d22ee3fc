#include "addin/flows/ThemeCheck.h"

#include "addin/flows/RunClose.h"
#include "base/Paths.h"

namespace zn {

namespace {

constexpr const char16_t* formatWithThemes = u"3D PDF - MBD (*.pdf)";
constexpr const char16_t* noPermission = u"No Permission to access 3dPDF Theme Path";

struct ThemeOfKind {
    const char16_t* extension;
    const char16_t* variable;
};
constexpr ThemeOfKind themesByKind[] = {
    {u"zenasm", u"Asm3DPDFThemePath"},
    {u"zenprt", u"Part3DPDFThemePath"},
};

const char16_t* themeVariable(const OutputRecord& record)
{
    if (!record.isCadFile)
        return nullptr;
    const Text extension = textBehindLastDot(record.path);
    for (const ThemeOfKind& theme : themesByKind) {
        if (equalNoCase(extension, theme.extension))
            return theme.variable;
    }
    return nullptr;
}

} // namespace

ThemeVerdict checkTheme(const ObjectRef& instance, FileLogic& fileLogic, const OutputRecord& record)
{
    const std::optional<Text> format = readText(instance, u"FileFormat");
    if (!format)
        return {.variableMissing = true, .deniedPath = {}};
    const char16_t* variable = themeVariable(record);
    if (!equalNoCase(*format, formatWithThemes) || !variable)
        return {};
    const std::optional<Text> theme = readText(instance, variable);
    if (!theme)
        return {.variableMissing = true, .deniedPath = {}};
    if (theme->empty() || fileLogic.CanReadVaultFile(*theme))
        return {};
    return {.variableMissing = false, .deniedPath = theme};
}

void reportDeniedTheme(TaskContext& context, IArkTaskInstance& instance, const Text& themePath, const Text& logPath)
{
    // The report that follows writes the final state; failures here must not keep the session from being stopped.
    instance.SetStatus(TaskRunState::FinishedWithErrors, E_ARK_PERMISSION_DENIED, noPermission, {});
    context.macroBuilder.AppendToLog(Text(noPermission) + u" '" + themePath + u"' ");
    context.session.Stop(true, S_OK);
    RunResult ignored;
    ignored.step([&] { context.fileLogic.CommitLogFile(logPath); });
}

} // namespace zn
