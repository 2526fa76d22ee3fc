#pragma once

#include "arkin/store/Database.h"
#include "arkin/tasks/StoredVariable.h"
#include "contracts/host/Codes.h"

#include <optional>
#include <vector>

namespace zn::arkin {

/// The add-in that does a task's work, unless the task names another.
inline constexpr const char16_t* defaultAddIn = u"ZNTaskAddIn.ZNTaskAddIn";

/// One entry of a task in a file's menu.
struct MenuEntry {
    std::int32_t identifier = 0; ///< the task's kind
    zn::Text menuText;
    zn::Text statusText;
    std::int32_t flags = 0x4001;
    bool operator==(const MenuEntry&) const = default;
};

/// A menu entry with the task that has it.
struct TaskMenuEntry : MenuEntry {
    zn::Text taskName;
};

/// Who is told when a run has ended: a command line, or "mail:ADDRESS"; empty for nobody. See Notice.h.
struct Notices {
    std::string failed; ///< of runs with failures
    std::string ended;  ///< of all runs
    bool any() const { return !failed.empty() || !ended.empty(); }
    bool operator==(const Notices&) const = default;
};

/// What the host itself keeps of a task. A run has what its task had at the launch.
struct HostSettings {
    std::int32_t fileLimit = 0;  ///< longest time for one file in seconds, 0 for none
    bool keepsIdentical = false; ///< an output that is as its latest version has it makes no new one
    Notices notices;
    bool operator==(const HostSettings&) const = default;
};

struct TaskDefinition {
    std::int32_t id = 0;
    zn::Text name;
    zn::Text addIn = defaultAddIn; ///< program identifier
    zn::Text createdBy;
    std::int64_t createdAt = 0;
    std::int32_t revision = 0; ///< how often it was changed
    zn::Text changedBy;        ///< empty before the first change
    std::int64_t changedAt = 0;
    HostSettings host;
    Variables variables;
    std::vector<MenuEntry> menu;

    /// By the variable `__type`; general without it.
    zn::TaskKind kind() const;
};

/// A change of a definition: what isn't named stays.
struct TaskChange {
    Variables variables;
    std::optional<std::vector<MenuEntry>> menu; ///< replaces all entries
    zn::Text user;
    std::int64_t at = 0;
    std::optional<HostSettings> host{};
};

/// The last change of a definition that somebody else made in the meantime.
struct TaskConflict {
    zn::Text user;
    std::int64_t at = 0;
};

/// The task definitions of one vault. Names are compared without regard to case. Every operation is one transaction.
class TaskStore {
public:
    /// Brings the task tables to their last step. The database must have the vault's tables.
    TaskStore(Database& database, std::int32_t vaultId);

    /// Stores a new task and returns its number. Raises `StatusError` E_ARK_NAME_ALREADY_EXISTS with a sentence.
    std::int32_t create(const TaskDefinition& task);
    /// Raises like `create` if a task of this name exists, or if no task can have it.
    void requireFreeName(zn::TextView name);
    /// None if there is no such task.
    std::optional<TaskDefinition> find(zn::TextView name);
    /// As `find`; a missing one raises `StatusError` E_INVALIDARG with a sentence that names it.
    TaskDefinition get(zn::TextView name);
    /// All tasks in the order of their names, without variables and menu but with `__type`.
    std::vector<TaskDefinition> list();
    /// The menu entries of all tasks, in the order of the tasks' names.
    std::vector<TaskMenuEntry> menuEntries();
    /// Makes the change. With a `revision`, only if the definition still has that one: else nothing is written and
    /// the conflict is returned. Raises `StatusError` E_INVALIDARG with a sentence if the task is gone. Runs that were
    /// launched before keep what they took over.
    std::optional<TaskConflict> change(
        std::int32_t taskId, const TaskChange& change, std::optional<std::int32_t> revision = {});
    /// The runs of the task stay.
    void remove(std::int32_t taskId);

    Database& database() { return m_database; }
    std::int32_t vaultId() const { return m_vaultId; }

private:
    void writeHostSettings(std::int32_t taskId, const HostSettings& host);
    void writeVariables(std::int32_t taskId, const Variables& variables);
    void writeMenu(std::int32_t taskId, const std::vector<MenuEntry>& entries);
    Variables readVariables(std::int32_t taskId);
    std::vector<MenuEntry> readMenu(std::int32_t taskId);

    Database& m_database;
    std::int32_t m_vaultId;
};

} // namespace zn::arkin
