#pragma once

#include "arkin/store/Database.h"
#include "arkin/tasks/StoredVariable.h"
#include "host/Codes.h"

#include <optional>
#include <vector>

namespace arkin {

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

struct TaskDefinition {
    std::int32_t id = 0;
    zn::Text name;
    zn::Text addIn = defaultAddIn; ///< program identifier
    zn::Text createdBy;
    std::int64_t createdAt = 0;
    Variables variables;
    std::vector<MenuEntry> menu;

    /// By the variable `__type`; general without it.
    zn::TaskKind kind() const;
};

/// The task definitions of one vault. Names are compared without regard to case. Every change is one transaction.
class TaskStore {
public:
    /// Brings the task tables to their last step. The database must have the vault's tables.
    TaskStore(Database& database, std::int32_t vaultId);

    /// Stores a new task and returns its number. Raises `StatusError` E_ARK_NAME_ALREADY_EXISTS with a sentence.
    std::int32_t create(const TaskDefinition& task);
    /// None if there is no such task.
    std::optional<TaskDefinition> find(zn::TextView name);
    /// As `find`; a missing one raises `StatusError` E_INVALIDARG with a sentence that names it.
    TaskDefinition get(zn::TextView name);
    /// All tasks in the order of their names, without variables and menu but with `__type`.
    std::vector<TaskDefinition> list();
    /// Creates or replaces variables. Runs that were launched before keep what they took over.
    void setVariables(std::int32_t taskId, const Variables& variables);
    void setMenu(std::int32_t taskId, const std::vector<MenuEntry>& entries);
    /// The runs of the task stay.
    void remove(std::int32_t taskId);

    Database& database() { return m_database; }
    std::int32_t vaultId() const { return m_vaultId; }

private:
    void writeVariables(std::int32_t taskId, const Variables& variables);
    void writeMenu(std::int32_t taskId, const std::vector<MenuEntry>& entries);
    Variables readVariables(std::int32_t taskId);
    std::vector<MenuEntry> readMenu(std::int32_t taskId);

    Database& m_database;
    std::int32_t m_vaultId;
};

} // namespace arkin
