#pragma once

#include "addin/pages/conversion/CardSources.h"
#include "addin/pages/frame/Page.h"

#include <optional>

class QComboBox;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace zn {

/// The second page of a Convert Files task: which card variables of the output files the task fills, and from what. A
/// row of its list is one of them, with the source on the left and the destination on the right.
class CFileCardPageDlg final : public Page {
public:
    /// Reads the vault's card variables, and raises what that raises.
    CFileCardPageDlg(PageEnvironment& environment, QWidget* parent, const std::shared_ptr<IArkVault>& vault);

    /// Drops lines that name card variables which the vault doesn't have any more.
    void load(const ObjectRef& task) override;
    /// Also declares each variable that the list names, because a run reads only what its task has declared.
    void save(const ObjectRef& task) override;

private:
    void makeLayout();
    void fillLists();
    void connectControls();

    void addVariable();
    void removeVariable();
    void showSelection();
    void takeDestination();
    void takeSource();
    void takeFreeText();

    QTreeWidgetItem* selectedRow() const;
    QTreeWidgetItem* addRow(const QString& source, CardSourceKind kind, const QString& destination);
    void setSource(QTreeWidgetItem& row, const QString& text, CardSourceKind kind);
    void setDestination(QTreeWidgetItem& row, const QString& name);
    void enableFreeText(bool enable);
    /// The label and icon of a source that isn't a card variable; none for a code that nobody knows.
    std::optional<CardChoice> fixedSource(CardSourceKind kind) const;
    /// The number of a card variable; none if the vault has none of that name.
    std::optional<std::int32_t> idOf(TextView name) const;
    /// Adds the row of a stored line.
    void loadLine(TextView line);

    QTreeWidget* m_list;
    QPushButton* m_add;
    QPushButton* m_remove;
    QComboBox* m_sources;
    QComboBox* m_destinations;
    QLineEdit* m_freeText;
    CardVariables m_variables; ///< of the vault
    CardChoices* m_sourceChoices;
    CardChoices* m_destinationChoices;
};

} // namespace zn
