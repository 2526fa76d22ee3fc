#pragma once

#include "arkin/store/Vault.h"

#include <QStringList>

class QPoint;

namespace zn::arkin {

class FileTable;

/// Which card variables the list of files shows, each as a column behind the others.
class CardColumns {
public:
    explicit CardColumns(Vault& vault)
        : m_vault(vault)
    {
    }

    /// Names of variables; those that the vault doesn't have are passed over.
    const QStringList& names() const { return m_names; }
    void setNames(const QStringList& names) { m_names = names; }

    /// Reads the values of the folder's files into the table.
    void fill(FileTable& table, std::int32_t folderId) const;
    /// Lets the user choose in a menu. False if nothing has changed.
    bool choose(const QPoint& at);

private:
    Vault& m_vault;
    QStringList m_names;
};

} // namespace zn::arkin
