#pragma once

#include "arkin/tasks/RunStore.h"
#include "contracts/host/ArkTask.h"

namespace zn::arkin {

// What is kept of a run as it was, and never changes afterwards: who launched it, where and with what, which programs
// did its work, and the macro of each file. Hashes are SHA-256 of UTF-8 texts, in 64 lower-case hexadecimal digits.

/// One worker's work on a run.
struct RunWork {
    std::int32_t claim = 0; ///< 1 for the first worker
    zn::Text machine;
    std::int32_t process = 0;
    std::int64_t begunAt = 0; ///< Unix seconds
    zn::Text addIn;           ///< as it names itself; empty if the work hasn't got to it
    std::int32_t addInVersion = 0;
    zn::ArkApplication application; ///< empty texts if it wasn't started, or if the add-in doesn't tell
    std::int32_t macros = 0;
};

struct RunAudit {
    std::int32_t runId = 0;
    zn::Text guid;
    zn::Text taskName;
    zn::Text userName;
    zn::Text machine;         ///< on which it was launched; empty for a run from before audits were kept
    std::int32_t process = 0; ///< that launched it
    std::int64_t launchedAt = 0;
    std::string templateHash;    ///< of the macro template; empty if the task has none, or for a run from before
    std::string settingsHash;    ///< of the other variables but the list of files; empty for a run from before
    std::int32_t againOf = 0;    ///< the run that it does again, 0 for none
    std::vector<zn::Text> asked; ///< variables that the launch has written over those of the task, in their order
    std::vector<RunWork> works;  ///< in the order of their claims

    bool isFromBefore() const { return settingsHash.empty(); }
};

/// One macro that was carried out, without its text.
struct AuditedMacro {
    std::int32_t claim = 0;
    std::int32_t position = 0; ///< from 0 in its claim
    zn::Text path;
    std::int32_t fileId = 0;
    std::int32_t version = 0;
    zn::Text configuration;
    std::string hash;
};

/// Reads what is kept. Failures are `StatusError`s with a sentence.
class RunAudits {
public:
    explicit RunAudits(Database& database)
        : m_database(database)
    {
    }

    /// Raises E_ARK_DATABASE if it is missing; `vault check` tells of that, too.
    RunAudit get(std::int32_t runId);
    /// All that the run had at its launch, with the template; nothing for a run from before.
    Variables settings(const RunAudit& audit);
    /// UTF-8; empty if there is none.
    std::string macroTemplate(const RunAudit& audit);
    /// In the order in which they were carried out.
    std::vector<AuditedMacro> macros(std::int32_t runId);
    /// As it was handed to the CAD application, in UTF-8; compared with its hash.
    std::string macroText(const RunAudit& audit, const AuditedMacro& macro);

private:
    std::string text(const std::string& hash);
    std::string packedMacro(std::int32_t runId, std::int32_t claim, std::int32_t position);

    Database& m_database;
};

/// The task's variables with those of the launch over them.
Variables launchSettings(const TaskDefinition& task, const NewRun& run);
/// The hash that a launch with these variables keeps as `RunAudit::settingsHash`.
std::string settingsHashOf(const Variables& variables);
/// Likewise for `RunAudit::templateHash`.
std::string templateHashOf(const Variables& variables);

/// Keeps what is known at a launch. Inside the launch's transaction.
void writeLaunch(
    Database& database, std::int32_t runId, const TaskDefinition& task, const NewRun& run, std::int64_t now);

/// A sentence for everything that was changed or removed since it was written, by the run's number. Only reads.
std::vector<std::string> auditProblems(Database& database);

} // namespace zn::arkin
