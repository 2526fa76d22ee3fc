#pragma once

#include "addin/files/SavedFileNotes.h"
#include "addin/session/CallGuard.h"
#include "addin/session/EventConnection.h"
#include "addin/session/ResultLabels.h"
#include "addin/session/SessionTexts.h"
#include "addin/session/StartupSettings.h"
#include "addin/session/Watcher.h"
#include "addin/session/ZnApplication.h"
#include "contracts/host/ArkTask.h"
#include "platform/Platform.h"

#include <map>
#include <memory>
#include <optional>

namespace zn {

class CZNDocument;

/// Owns one running instance of the CAD application: chooses the installed release, starts a process of its own,
/// listens to it, runs macros in it, replaces it when it is worn out, and closes it, by force if need be. Between
/// `Start` and `Stop` there is a session.
///
/// Used on the run's thread, which also receives the application's events while it waits in calls. Statuses are the
/// system's or the application's; `GetLastError` has the sentence for a person.
class ZNManager {
public:
    /// The ports outlive the object.
    explicit ZNManager(const Platform& platform);
    ZNManager(const ZNManager&) = delete;
    ZNManager& operator=(const ZNManager&) = delete;
    /// Ends a process that is still there, at once.
    ~ZNManager();

    /// To be called before a run. `fileLogic` is told of saved files and outlives the session. `requestedYear` is a
    /// release such as 2018, or 0 for the machine's default. Raises the host's failure to read a task variable.
    void Configure(
        SavedFileNotes& fileLogic, TaskKind taskKind, const ObjectRef& taskInstance, std::int32_t requestedYear);

    /// Starts the application and prepares it for work without a user. After a failure the process may be alive; only
    /// `Stop` ends it. Raises `E_FAIL` if the event sink of a session that was never stopped is still connected.
    Status Start();
    /// Stops and starts again; `status` is the failure that calls for it, or 0.
    Status Restart(Status status);
    /// Closes the application, politely if `status` is no failure. With `force` it is waited for until it has ended.
    /// 0 or the failure.
    Status Stop(bool force, Status status);
    /// Stops with force. `Stop` forgets the last error when there is no process any more; here it stays, so that a
    /// report can still say why a start or a macro has failed.
    Status StopKeepingError(Status status);

    /// Runs the procedure `main` of the macro, restarting the application where that may help. Returns when the macro
    /// has ended normally; raises otherwise, with the reason as the last error. After `longest`, unless that is 0, the
    /// macro is ended, or else its process, and nothing is tried again; `LimitHit` tells so.
    void RunMacro(const Text& macroText, std::chrono::seconds longest = {});
    bool LimitHit() const { return m_guard.limitHit(); }
    /// Whether a macro went on when it should have ended, so that its process was ended.
    bool EndedProcess() const { return m_guard.endedProcess(); }

    /// Gets the run's thread back from whatever call it is in, and lets nothing be started any more. Never waits. May
    /// be called from any thread.
    void RequestStop() { m_guard.requestStop(); }
    bool StopRequested() const { return m_guard.stopRequested(); }
    /// A new run begins.
    void ForgetStop() { m_guard.forgetStop(); }
    /// The next macros reach these folders (backslash paths) and no file outside, as far as the application can confine
    /// them. It lasts until `Configure`.
    void ConfineMacros(std::vector<Text> folders) { m_reach = std::move(folders); }
    /// The files of the next macros, the first one first, which an application that offers it reads meanwhile.
    void ExpectFiles(std::vector<Text> files) { m_expected = std::move(files); }
    /// Whether a macro was to be confined and this application can't.
    bool CannotConfine() const { return m_cannotConfine; }
    /// What the last macro tried outside, in sentences; nothing if the application has gone.
    std::vector<Text> GetRefusals() const;
    /// To be called after each file: replaces the application after 100 macros and saved files, or when its memory has
    /// grown past twice its first size and 256 MiB, and starts it anew if it went away. Raises on failure.
    void AfterMacro();

    /// Switches add-ins of the application off before a run (false) and on again after it (true). What killed processes
    /// have left goes at the beginning.
    void ManageStartup(bool restore);
    /// Switches on what a killed process has left switched off. True if there was anything.
    bool RestoreLeftOverStartup() { return m_startup.restoreLeftOver(); }

    /// The application, or null without a session.
    DispatchRef GetApplication() const { return m_app; }
    /// The first of the application's build numbers, such as "zn2018". Raises its failure.
    Text GetRevisionText() const;
    /// The application's name, release and build numbers, for those who ask later with what a run was done. Raises its
    /// failure.
    ArkApplication DescribeApplication() const;
    /// What the application has said of its last work, such as why a file doesn't open; nothing if it can't be asked.
    std::vector<Text> TakeMessages() const;
    /// The text of the last failure, without any " 0": a release of 0 is the default one and has no year to show.
    Text GetLastError() const;

    // --- for the documents of this session

    /// A text of the session in the installation's language.
    Text textOf(const NumberedText& text) const;
    const ResultLabels& labels() const { return m_labels; }
    bool isOlderThan(std::uint16_t major, std::uint16_t minor) const;
    /// The failure of the application is raised.
    void FixUpDrawing(const ZnModel& drawing);
    /// Counts a result and tells the file logic.
    void NoteResult(const Text& path, const Text& label, bool isPrint);
    /// The document is being closed. Nothing happens if it isn't one of the session's.
    void ForgetDocument(CZNDocument& document);

private:
    class ApplicationSink;
    enum class MemoryUse { Baseline, Fine, TooLarge, Unknown };
    struct MacroOutcome {
        Status status = S_OK;
        ZnApplication::MacroResult result;
    };

    // ZNManager.cpp
    MemoryUse measureMemory();
    Status connectNewDocuments();
    std::shared_ptr<EventSink> applicationSink() const;

    // SessionStart.cpp
    Text resolveClass();
    bool launch(const Text& classId);
    bool waitForApplication();
    Text itemName() const;
    Status prepareApplication();
    Status hideApplication(const ZnApplication& application);
    Status fail(const NumberedText& text, Status status);

    // SessionStop.cpp
    void disconnectEvents();
    void disconnectDocuments();
    Status leavePolitely();
    bool waitForEnd(int seconds);

    // MacroRun.cpp
    MacroOutcome runWithRetries(const Text& file);
    MacroOutcome callMacro(const Text& file);
    void copyForSupport(const Text& file);
    [[noreturn]] void raiseMacroFailure(const MacroOutcome& outcome);

    const Platform m_platform;
    SavedFileNotes* m_fileLogic = nullptr;
    TaskKind m_taskKind = TaskKind::Unknown;
    ResultLabels m_labels;
    std::int32_t m_requestedYear = 0;

    DispatchRef m_app;
    std::shared_ptr<ApplicationSink> m_sink;
    EventConnection m_events;
    std::map<DispatchRef, std::shared_ptr<CZNDocument>> m_documents;
    std::atomic<std::int32_t> m_processId = 0; ///< the guard's thread reads it
    std::uint16_t m_revisionMajor = 0;
    std::uint16_t m_revisionMinor = 0;
    bool m_regressionMode = false;
    bool m_forceRegression = false;

    std::int32_t m_useCount = 0;     ///< macros and saved files since the last start
    std::int32_t m_restartCount = 0; ///< restarts in a row without a success in between
    bool m_baselinePending = false;  ///< the next look at the memory use is the session's first
    std::uint64_t m_baselineWorkingSet = 0;

    std::optional<std::vector<Text>> m_reach;
    bool m_cannotConfine = false;
    std::vector<Text> m_expected;

    Text m_lastError;
    StartupSettings m_startup;
    mutable CallGuard m_guard;
    Watcher m_watcher;
};

} // namespace zn
