#include "addin/macro/MacroBuilder.h"
#include "addin/variables/TaskVariables.h"
#include "base/Format.h"
#include "base/Paths.h"
#include "platform/FileSystem.h"

/// The log of a run, which the macro builder shares with the macros.
namespace zn {

Text MacroBuilder::GetErrorLogPath()
{
    const std::optional<Text> folder = readText(m_taskInstance, u"ErrorLogPath");
    if (!folder)
        return {};
    return pathAppend(pathAppend(m_vaultRoot, *folder), m_instanceGuid) + u".log";
}

void MacroBuilder::AppendToLog(TextView text)
{
    const Text path = GetErrorLogPath();
    const std::string bytes = toCodePage(text);
    if (path.empty() || m_platform.files.appendBytes(path, bytes))
        return;
    constexpr std::size_t longestFolder = 260;
    const std::size_t separator = path.rfind(u'\\');
    if (separator == Text::npos || separator > longestFolder)
        return;
    if (m_platform.files.createFolders(path.substr(0, separator)))
        m_platform.files.appendBytes(path, bytes);
}

void MacroBuilder::LogHostError(Status code, TextView text)
{
    if (!m_vault)
        throw StatusError(E_POINTER, "There is no vault.");
    Text name;
    Text description;
    if (!failed(m_vault->GetErrorText(code, name, description)))
        AppendToLog(formatText("An error occured: %s\r\n\t%s\r\n\t%s", text, name, description));
}

} // namespace zn
