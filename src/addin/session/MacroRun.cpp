// How one macro is run: written to a file, called in the application, retried, and its failure put into words.

#include "addin/session/FindExecutable.h"
#include "addin/session/MacroFile.h"
#include "addin/session/ZNManager.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"

#include <algorithm>

namespace zn {

namespace {

constexpr const char16_t* moduleName = u"ZNMacro1";
constexpr const char16_t* procedureName = u"main";
constexpr std::uint16_t firstReleaseWithReasons = 17;
constexpr int macroAttempts = 3;
constexpr int attemptsAfterDialog = 2;
/// A dialog that comes back is answered by a restart each time; nobody waits for more of them than this.
constexpr int mostDialogRounds = 100;

} // namespace

ZNManager::MacroOutcome ZNManager::callMacro(const Text& file)
{
    MacroOutcome outcome;
    try {
        if (!m_app)
            throw StatusError(E_POINTER, "The CAD application has not been started.");
        const ZnApplication application(m_app);
        // Each time: a process that was started anew knows nothing of it.
        if (m_reach && !m_cannotConfine)
            m_cannotConfine = !application.ConfineMacros(*m_reach);
        // Likewise, and it passes over what it has heard before.
        if (!m_expected.empty() && application.OffersReadAhead())
            application.ReadAhead(m_expected);
        outcome.result = m_revisionMajor < firstReleaseWithReasons
            ? application.RunMacro(file, moduleName, procedureName)
            : application.RunMacro2(file, moduleName, procedureName, 0);
    } catch (...) {
        outcome.status = currentExceptionStatus();
    }
    return outcome;
}

ZNManager::MacroOutcome ZNManager::runWithRetries(const Text& file)
{
    // Restarts that no macro call has ended since leave fewer attempts; one is always made.
    int attempts = std::max(0, macroAttempts - m_restartCount / 3);
    int dialogRounds = 0;
    for (;;) {
        if (m_guard.hasFired())
            return {E_ABORT, {}};
        m_watcher.start();
        MacroOutcome outcome = callMacro(file);
        m_watcher.stop();
        // Nothing is tried again that somebody has ended.
        if (m_guard.hasFired())
            return outcome;
        if (m_watcher.taskSchedulerDialogSeen()) {
            outcome.status = E_FAIL;
            attempts = ++dialogRounds < mostDialogRounds ? attemptsAfterDialog : 0;
        }
        if (failed(outcome.status) && attempts > 1) {
            const Status restarted = Restart(outcome.status);
            if (failed(restarted)) {
                outcome.status = restarted;
                return outcome;
            }
        } else {
            m_restartCount = 0;
        }
        if (!failed(outcome.status) || --attempts <= 0)
            return outcome;
    }
}

/// Support staff look at the last macro as it ran.
void ZNManager::copyForSupport(const Text& file)
{
    Registry& registry = m_platform.registry;
    registry.createKey(RegistryRoot::User, addInKey);
    const auto value = registry.read(RegistryRoot::User, addInKey, scriptCopyValue);
    if (const auto path = value ? value->asText() : std::nullopt)
        m_platform.files.copyFile(file, *path);
}

void ZNManager::RunMacro(const Text& macroText, std::chrono::seconds longest)
{
    const CallGuard::Scope guarded(m_guard, longest);
    m_lastError.clear();
    MacroFile file;
    try {
        file = writeMacroFile(m_platform.files, macroText);
    } catch (const StatusError& failure) {
        m_lastError = textOf(SessionTexts::macroFailed) + u" " + toText(failure.what());
        throw;
    }
    MacroOutcome outcome{E_FAIL, {}};
    {
        const FileRemoval removal(m_platform.files, file.path);
        if (file.ready)
            outcome = runWithRetries(file.path);
        copyForSupport(file.path);
    }
    if (failed(outcome.status) || !outcome.result.success)
        raiseMacroFailure(outcome);
}

void ZNManager::raiseMacroFailure(const MacroOutcome& outcome)
{
    m_lastError = textOf(SessionTexts::macroFailed);
    if (const NumberedText* reason = macroReason(outcome.result.reason))
        m_lastError += u" " + textOf(SessionTexts::reason) + u" " + textOf(*reason);
    throw StatusError(failed(outcome.status) ? outcome.status : E_FAIL, toUtf8(m_lastError));
}

} // namespace zn
