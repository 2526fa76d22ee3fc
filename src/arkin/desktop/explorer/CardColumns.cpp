#include "arkin/desktop/explorer/CardColumns.h"

#include "arkin/desktop/explorer/FileTable.h"
#include "arkin/desktop/frame/Texts.h"

#include <QMenu>

namespace zn::arkin {

void CardColumns::fill(FileTable& table, std::int32_t folderId) const
{
    std::vector<FileTable::CardColumn> columns;
    for (const Variable& variable : m_vault.cards().variables())
        if (m_names.contains(shown(variable.name)))
            columns.push_back({shown(variable.name), cardColumnOf(m_vault, folderId, variable.id)});
    table.setCardColumns(std::move(columns));
}

bool CardColumns::choose(const QPoint& at)
{
    QMenu menu;
    menu.setObjectName("columnMenu");
    for (const Variable& variable : m_vault.cards().variables()) {
        const QString name = shown(variable.name);
        QAction* const column = menu.addAction(name);
        column->setObjectName("column:" + name);
        column->setCheckable(true);
        column->setChecked(m_names.contains(name));
    }
    if (menu.isEmpty())
        menu.addAction(own("The vault has no card variables."))->setEnabled(false);
    const QAction* const chosen = menu.exec(at);
    if (!chosen)
        return false;
    if (chosen->isChecked())
        m_names << chosen->text();
    else
        m_names.removeAll(chosen->text());
    return true;
}

} // namespace zn::arkin
