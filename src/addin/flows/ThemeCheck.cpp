#include "addin/flows/ThemeCheck.h"

#include "addin/flows/RunClose.h"
#include "addin/variables/LaunchFreedom.h"

namespace zn {

namespace {

constexpr const char16_t* formatWithThemes = u"3D PDF - MBD (*.pdf)";
constexpr const char16_t* noPermission = u"No Permission to access 3dPDF Theme Path";

const char16_t* themeVariable(const OutputRecord& record)
{
    switch (selectedKind(record)) {
    case assembliesSelected:
        return u"Asm3DPDFThemePath";
    case partsSelected:
        return u"Part3DPDFThemePath";
    default:
        return nullptr;
    }
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
