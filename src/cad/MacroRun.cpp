#include "base/Paths.h"
#include "cad/SessionTexts.h"
#include "cad/ZNManager.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"

namespace zn {

namespace {

constexpr const char16_t* moduleName = u"ZNMacro1";
constexpr const char16_t* procedureName = u"main";
constexpr const char16_t* settingsKey = u"Software\\Zentrel\\Applications\\Arkin Enterprise\\ZNTaskAddIn";
constexpr std::size_t longestFolder = 256;
constexpr std::uint16_t firstRevisionWithReason = 17;
constexpr int mostAttempts = 3;

Text failureText(std::int32_t reason)
{
    Text text = sessiontext::macroFailed;
    for (const sessiontext::MacroReason& row : sessiontext::macroReasons) {
        if (row.code == reason)
            return text + u" " + sessiontext::reasonLabel + u" " + row.text;
    }
    return text;
}

} // namespace

void ZNManager::RunMacro(const Text& macroText)
{
    m_lastError.clear();
    const Text macroFile = WriteMacroFile(macroText);
    ZnApplication::MacroResult result;
    const Status status = RunWithRetries(macroFile, result);
    CopyForSupport(macroFile);
    m_platform.files.removeFile(macroFile);
    if (!failed(status) && result.success)
        return;
    m_lastError = failureText(result.reason);
    throw StatusError(failed(status) ? status : E_FAIL, toUtf8(m_lastError));
}

/// The macro in a fresh file of the temporary folder, in the narrow code page. A failure leaves no file behind.
Text ZNManager::WriteMacroFile(const Text& macroText)
{
    FileSystem& files = m_platform.files;
    const auto fail = [&](const Text& path) {
        m_lastError = Text(sessiontext::macroFailed) + u" The macro file '" + path + u"' could not be written: "
            + files.lastError();
        throw StatusError(E_FAIL, toUtf8(m_lastError));
    };
    const Text folder = files.temporaryFolder();
    if (folder.size() > longestFolder)
        fail(folder);
    const Text temporary = files.temporaryFile(folder, u"TFR");
    Text macroFile = pathWithExtension(temporary, u".znb");
    const bool written = files.writeBytes(temporary, toCodePage(macroText)) && files.removeFile(macroFile)
        && files.renameFile(temporary, macroFile);
    if (!written) {
        const Text reason = files.lastError();
        files.removeFile(temporary);
        fail(macroFile);
    }
    return macroFile;
}

ZnApplication::MacroResult ZNManager::CallMacro(const Text& macroFile) const
{
    if (!m_app)
        throw StatusError(E_POINTER, "There is no CAD application.");
    return m_revisionMajor < firstRevisionWithReason ? m_app.RunMacro(macroFile, moduleName, procedureName)
                                                     : m_app.RunMacro2(macroFile, moduleName, procedureName);
}

Status ZNManager::RunWithRetries(const Text& macroFile, ZnApplication::MacroResult& result)
{
    int attempts = std::max(mostAttempts - m_restartCount / 3, 0);
    Status status = S_OK;
    do {
        m_watcher.start();
        status = S_OK;
        try {
            result = CallMacro(macroFile);
        } catch (const StatusError& error) {
            result = {};
            status = error.status();
        }
        m_watcher.stop();
        if (m_watcher.taskSchedulerDialogSeen()) {
            status = E_FAIL;
            attempts = 2;
        }
        if (failed(status) && attempts > 1) {
            if (const Status restarted = Restart(status); failed(restarted))
                return restarted;
        } else {
            m_restartCount = 0;
        }
        --attempts;
    } while (failed(status) && attempts > 0);
    return status;
}

/// A way for support staff to see the last macro as it ran. It must never disturb a run.
void ZNManager::CopyForSupport(const Text& macroFile)
{
    m_platform.registry.createKey(RegistryRoot::User, settingsKey);
    const auto value = m_platform.registry.read(RegistryRoot::User, settingsKey, u"ScriptCopyPath");
    const auto path = value ? value->asText() : std::nullopt;
    if (path && !path->empty())
        m_platform.files.copyFile(macroFile, *path);
}

} // namespace zn
