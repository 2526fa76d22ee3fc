#pragma once

#include "arkin/desktop/pictures/DailyHost.h"

#include <QWidget>

class QAction;
class QComboBox;
class QToolBar;
class QTreeView;

namespace zn::arkin {

class RunChoice;
class RunPane;
class RunTable;

/// The runs of a vault as they go on: a list to choose from, what one of them does, and what can be asked of the
/// chosen ones.
class RunsPage : public QWidget {
public:
    explicit RunsPage(const DailyHost& host, QWidget* parent = nullptr);
    ~RunsPage() override;

    /// Makes the run the chosen one, whatever is filtered.
    void choose(std::int32_t runId);
    /// Reads what has changed, if the database isn't in the turn of its last look.
    void look(std::int64_t turn, std::int64_t now);

    /// The local path of an output that the user wants to see.
    std::function<void(const zn::Text& path)> open;
    /// Asks for a look at once.
    std::function<void()> changed;
    /// A run that this user launched has ended while it was watched.
    std::function<void(const RunInfo& run)> ended;

private:
    using Request = RunInfo (*)(RunStore&, std::int32_t, std::int64_t);

    QWidget* makeFilters();
    void makeActions();
    void addRequest(const char* name, const QString& text, Request request, bool (*fits)(const RunInfo&));
    void filter();
    void fillTasks();
    void showChosen();
    void noteEnds();
    void ask(Request request);
    void addAgain(const char* name, const QString& text, bool onlyFailed, bool (*fits)(const RunInfo&));
    void runAgain(bool onlyFailed);
    std::vector<RunInfo> chosen() const;

    struct AskAction {
        QAction* action;
        bool (*fits)(const RunInfo&);
    };

    const DailyHost& m_host;
    RunTable* m_table;
    RunChoice* m_choice;
    QComboBox* m_task = nullptr;
    QComboBox* m_kind = nullptr;
    QComboBox* m_user = nullptr;
    QComboBox* m_since = nullptr;
    QToolBar* m_bar;
    QTreeView* m_list;
    RunPane* m_pane;
    QAction* m_details = nullptr;
    std::vector<AskAction> m_asks;
    std::int64_t m_turn = -1;
    std::vector<std::int32_t> m_watched; ///< runs of this user that hadn't ended
};

} // namespace zn::arkin
