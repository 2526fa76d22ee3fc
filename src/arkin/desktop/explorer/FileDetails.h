#pragma once

#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/store/Vault.h"

#include <functional>
#include <optional>
#include <QTabWidget>

class QTreeWidget;
class QTreeWidgetItem;

namespace zn::arkin {

/// What the vault knows of one file: its versions, its card, its references both ways, and the runs
/// that read or made it. The page in front is read
/// when the file is chosen, the others when they come to the front. The card's values can be written while the file is
/// checked out here; they belong to the version to come.
class FileDetails : public QTabWidget {
public:
    explicit FileDetails(const DailyHost& host, QWidget* parent = nullptr);

    /// None for no file, or several.
    void setFile(const std::optional<Place>& place);
    /// The version that is chosen on the page of versions; 0 for none.
    std::int32_t chosenVersion() const;
    /// Another version, or none, is chosen.
    std::function<void()> whenChosen;
    /// The vault has another version of the file.
    std::function<void()> whenChanged;
    /// The user wants to see a run.
    std::function<void(std::int32_t runId)> showRun;

private:
    QTreeWidget* addList(const char* name, const char* title, std::initializer_list<const char*> columns);
    void fill();
    void fillVersions(const Place& place);
    void fillCard(const Place& place);
    void writeCardValue(const QTreeWidgetItem& row);
    void fillReferences(const Place& place);
    void fillRuns(const Place& place);

    const DailyHost& m_host;
    Vault& m_vault;
    std::optional<Place> m_place;
    QTreeWidget* m_versions;
    QTreeWidget* m_card;
    QTreeWidget* m_references;
    QTreeWidget* m_runs;
};

} // namespace zn::arkin
