#include "addin/macro/MacroBuilder.h"
#include "addin/variables/TaskVariables.h"
#include "base/Format.h"
#include "base/Paths.h"
#include "platform/FileSystem.h"

#include <utility>

/// The log of a run, which the macro builder shares with the macros.
namespace zn {

Text MacroBuilder::GetErrorLogPath()
{
    if (m_instanceGuid.empty())
        readRunIdentity();
    const std::optional<Text> folder = readText(m_taskInstance, u"ErrorLogPath");
    if (!folder)
        return {};
    return pathAppend(pathAppend(m_vaultRoot, *folder), m_instanceGuid) + u".log";
}

void MacroBuilder::AppendToLog(TextView text)
{
    const Text path = GetErrorLogPath();
    const std::string bytes = toReadableCodePage(text);
    const auto append = [&] {
        const bool done = m_platform.files.appendBytes(path, bytes).done;
        m_logSeen += done ? bytes.size() : 0;
        return done;
    };
    if (path.empty() || append())
        return;
    constexpr std::size_t longestFolder = 260;
    const std::size_t separator = path.rfind(u'\\');
    if (separator > longestFolder) // or there is none
        return;
    if (m_platform.files.createFolders(path.substr(0, separator)))
        append();
}

Text MacroBuilder::macroLogPath()
{
    const Text folder = readText(m_taskInstance, u"ErrorLogPath").value_or(Text());
    return pathAppend(pathAppend(m_vaultRoot, folder), m_instanceGuid) + u".log";
}

std::uint64_t MacroBuilder::macroLogSize()
{
    const auto attributes = m_platform.files.attributes(macroLogPath());
    return attributes ? attributes->size : 0;
}

Text MacroBuilder::TakeMacroLog()
{
    const std::uint64_t size = macroLogSize();
    const std::uint64_t seen = std::exchange(m_logSeen, size);
    if (size <= seen)
        return {};
    const FileBytes bytes = m_platform.files.readBytes(macroLogPath());
    return bytes && bytes->size() > seen ? trim(fromReadableCodePage(bytes->substr(seen))) : Text();
}

Text MacroBuilder::LogHostError(Status code, TextView text)
{
    if (!m_vault)
        throw StatusError(E_POINTER, "There is no vault.");
    Text name;
    Text description;
    if (!failed(m_vault->GetErrorText(code, name, description)))
        AppendToLog(formatText("An error occured: %s\r\n\t%s\r\n\t%s", text, name, description));
    return description;
}

} // namespace zn
