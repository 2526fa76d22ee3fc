#include "arkin/store/Permissions.h"

#include "arkin/store/Codes.h"

#include <soci/soci.h>

namespace zn::arkin {

namespace {

bool has(const Rights& rights, Right right)
{
    switch (right) {
    case Right::Read:
        return rights.read;
    case Right::Add:
        return rights.add;
    case Right::Delete:
        return rights.remove;
    }
    return false;
}

const char* verbOf(Right right)
{
    switch (right) {
    case Right::Read:
        return "read files of";
    case Right::Add:
        return "add files to";
    case Right::Delete:
        return "delete files from";
    }
    return "";
}

} // namespace

bool Permissions::allowed(std::int32_t folderId, Right right)
{
    if (m_entries.empty())
        return true;
    for (std::int32_t id = folderId; id != 0; id = m_folders.parentOf(id)) {
        const auto entry = m_entries.find(id);
        if (entry != m_entries.end())
            return has(entry->second, right);
    }
    return true;
}

void Permissions::require(std::int32_t folderId, Right right)
{
    if (!allowed(folderId, right))
        throw zn::StatusError(E_ARK_PERMISSION_DENIED,
            m_user + " has no permission to " + verbOf(right) + " the folder \\"
                + zn::toUtf8(m_folders.pathOf(folderId)) + ".");
}

void Permissions::set(std::int32_t folderId, zn::TextView user, const Rights& rights)
{
    const std::string name = zn::toUtf8(user);
    const int read = rights.read, add = rights.add, remove = rights.remove;
    Transaction transaction(m_database);
    m_database.session() << "DELETE FROM permissions WHERE folder_id = :f AND user_name = :u", soci::use(folderId),
        soci::use(name);
    m_database.session() << "INSERT INTO permissions (folder_id, user_name, may_read, may_add, may_delete) "
                            "VALUES (:f, :u, :r, :a, :d)",
        soci::use(folderId), soci::use(name), soci::use(read), soci::use(add), soci::use(remove);
    transaction.commit();
    refresh();
}

void Permissions::inherit(std::int32_t folderId, zn::TextView user)
{
    const std::string name = zn::toUtf8(user);
    Transaction transaction(m_database);
    m_database.session() << "DELETE FROM permissions WHERE folder_id = :f AND user_name = :u", soci::use(folderId),
        soci::use(name);
    transaction.commit();
    refresh();
}

std::vector<Permissions::Entry> Permissions::entries(std::int32_t vaultId)
{
    std::vector<Entry> entries;
    Entry entry;
    int read = 0, add = 0, remove = 0;
    soci::statement statement = (m_database.session().prepare
            << "SELECT folder_id, user_name, may_read, may_add, may_delete FROM permissions "
               "JOIN folders ON folders.id = permissions.folder_id WHERE folders.vault_id = :v "
               "ORDER BY folder_id, user_name",
        soci::use(vaultId), soci::into(entry.folderId), soci::into(entry.user), soci::into(read), soci::into(add),
        soci::into(remove));
    statement.execute();
    while (statement.fetch()) {
        entry.rights = {read != 0, add != 0, remove != 0};
        entries.push_back(entry);
    }
    return entries;
}

void Permissions::refresh()
{
    m_entries.clear();
    int folderId = 0, read = 0, add = 0, remove = 0;
    soci::statement statement = (m_database.session().prepare
            << "SELECT folder_id, may_read, may_add, may_delete FROM permissions WHERE user_name = :u",
        soci::use(m_user), soci::into(folderId), soci::into(read), soci::into(add), soci::into(remove));
    statement.execute();
    while (statement.fetch())
        m_entries[folderId] = {read != 0, add != 0, remove != 0};
}

} // namespace zn::arkin
