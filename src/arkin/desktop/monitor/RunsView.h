#pragma once

#include "arkin/desktop/pictures/DailyHost.h"

#include <QWidget>

class QAction;
class QComboBox;
class QLabel;
class QTimer;
class QToolBar;
class QTreeView;

namespace zn::arkin {

class RunChoice;
class RunPane;
class RunTable;

/// The runs of a vault as they go on: a list to choose from, what one of them does, and what can be asked of the
/// chosen ones. It looks once a second whether the database has changed, and reads only then.
class RunsView : public QWidget {
public:
    explicit RunsView(const DailyHost& host, QWidget* parent = nullptr);
    ~RunsView() override;

    /// Makes the run the chosen one, whatever is filtered.
    void choose(std::int32_t runId);
    /// Looks now.
    void look();

    /// The local path of an output that the user wants to see.
    std::function<void(const zn::Text& path)> open;
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
    QComboBox* m_task;
    QComboBox* m_kind;
    QComboBox* m_user;
    QComboBox* m_since;
    QToolBar* m_bar;
    QTreeView* m_list;
    RunPane* m_pane;
    QLabel* m_trouble;
    QTimer* m_timer;
    QAction* m_details;
    std::vector<AskAction> m_asks;
    std::int64_t m_turn = -1;
    std::vector<std::int32_t> m_watched; ///< runs of this user that hadn't ended
};

} // namespace zn::arkin
