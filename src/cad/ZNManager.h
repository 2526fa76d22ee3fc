#pragma once

#include "cad/FindExecutable.h"
#include "cad/StartupSettings.h"
#include "cad/Watcher.h"
#include "cad/ZnApplication.h"
#include "cad/ZNDocument.h"
#include "files/SavedFileNotes.h"
#include "host/ArkTask.h"

#include <atomic>
#include <map>

namespace zn {

/// Which configurations or sheets become outputs, and how they are grouped into files; bit numbers as stored.
struct OutputGrouping {
    std::int32_t files = 0;
    std::int32_t outputs = 0;
    Text name;
};

/// Owns one running CAD application on the worker machine: finds it, starts it hidden as a process of its own, runs
/// macros in it, learns from its events which files they save, and in the end closes it, by force if need be.
/// Used on the run driver's thread; a watcher thread runs beside a start and a macro.
class ZNManager {
public:
    /// `platform` outlives the object.
    explicit ZNManager(const Platform& platform);
    ~ZNManager();

    /// Takes what a run needs of its task. `notes` outlives the session. `requestedYear` is the CAD version as a year,
    /// 0 for the default. Raises the host's failures and those of converting a variable.
    void Configure(SavedFileNotes& notes, TaskKind taskKind, const ObjectRef& taskInstance, std::int32_t requestedYear);
    /// Starts the application and attaches to it. On a failure the process may be up: `Stop` cleans that up.
    Status Start();
    /// Counts a restart, stops with `status` (a failure skips the polite exit) and starts.
    Status Restart(Status status);
    /// Ends the application; with `force` it is waited for. 0, or the failure whose text `GetLastError` gives.
    Status Stop(bool force, Status status);
    /// Ends what a failed start may have left running; the text of the failed start stays.
    void StopAfterFailedStart(Status status);
    /// Runs a macro's procedure `main` with up to three attempts, and blocks until it has ended. Raises the failure;
    /// `GetLastError` then tells why.
    void RunMacro(const Text& macroText);
    /// To be called after each file: replaces an application that is worn out, starts it if it went away.
    /// Raises a failure.
    void AfterMacro();

    /// The first of the application's build texts, such as "zn2018". Raises the application's failure.
    Text GetRevisionText() const { return m_app.BuildText(); }
    /// A new reference, or null.
    DispatchRef GetApplication() const { return m_app.object(); }
    /// The failure text of the last operation without any " 0", which readers of reports rely on; empty if none.
    Text GetLastError() const;

    /// `restore` false before a run, true after it.
    void ManageStartup(bool restore);

    // What the documents of this session need.
    SavedFileNotes& notes() { return *m_notes; }
    TaskKind taskKind() const { return m_taskKind; }
    const OutputGrouping& sheets() const { return m_sheets; }
    const OutputGrouping& configurations() const { return m_configurations; }
    const ZnApplication& application() const { return m_app; }
    bool regressionMode() const { return m_regressionMode; }
    bool isOlderThan(std::uint16_t major, std::uint16_t minor) const;
    /// A macro run or a saved file, towards the restart at 100.
    void CountUse() { ++m_useCount; }
    /// Disconnects a document that closes. A document that isn't known is left alone.
    void ForgetDocument(const CZNDocument& document);

private:
    Status ResolveClass(Text& classId);
    bool Launch(const Text& classId);
    DispatchRef WaitForApplication();
    Status SetUp();
    Status AttachEvents();
    Status HideWindow();
    Status AskToLeave();
    bool WaitForEnd(int seconds);
    Status RestartIfWornOut();
    bool IsTooLarge();
    void OnDocumentEvent();
    void DetachEvents();
    Text WriteMacroFile(const Text& macroText);
    Status RunWithRetries(const Text& macroFile, ZnApplication::MacroResult& result);
    ZnApplication::MacroResult CallMacro(const Text& macroFile) const;
    void CopyForSupport(const Text& macroFile);
    Text NotInstalledText() const;

    const Platform& m_platform;
    StartupSettings m_startup;
    ZnApplication m_app;
    std::uint32_t m_cookie = notConnected;
    std::map<DispatchRef, std::shared_ptr<CZNDocument>> m_documents;
    std::vector<std::shared_ptr<CZNDocument>> m_closed; ///< kept for event handlers that are still on the stack
    bool m_regressionMode = false;
    bool m_forceRegression = false;
    bool m_baselinePending = false;
    std::uint16_t m_revisionMajor = 0;
    std::uint16_t m_revisionMinor = 0;
    Text m_lastError;
    SavedFileNotes* m_notes = nullptr;
    std::atomic<std::int32_t> m_processId = 0;
    std::int32_t m_requestedYear = 0;
    std::int32_t m_useCount = 0;
    std::uint64_t m_baselineWorkingSet = 0;
    TaskKind m_taskKind = TaskKind::Unknown;
    std::int32_t m_restartCount = 0;
    OutputGrouping m_sheets;
    OutputGrouping m_configurations;
    Watcher m_watcher; ///< last, so that its thread ends before the rest goes
};

} // namespace zn
