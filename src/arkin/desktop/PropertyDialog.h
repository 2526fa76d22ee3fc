#pragma once

#include "arkin/desktop/PageDialog.h"

#include <vector>

class QLabel;
class QListWidget;
class QStackedWidget;

namespace zn::arkin {

class HostPage;
class TaskSetup;
struct TaskConflict;

/// A task's properties: the add-in's pages under their titles, behind them the host's own, with OK and Cancel. OK
/// stores what the pages write; a page that refuses, a failure, and somebody else's change of the same task leave the
/// dialog open with everything as typed.
class PropertyDialog : public PageDialog {
public:
    /// Lets the add-in build its pages. Raises its failure with a sentence. `setup` outlives the dialog, which closes
    /// it in its destructor.
    explicit PropertyDialog(TaskSetup& setup);
    ~PropertyDialog() override;

    void accept() override;
    void reject() override;

private:
    void makePages();
    void addArea(PageArea* area);
    /// The user wants another page; the one in front may want to stay.
    void turnTo(int index);
    /// Brings a page to the front, whatever the one before it says.
    void bringToFront(int index);
    void showRefusing(const zn::Text& title);
    /// Whether what the host's page has can be stored; it comes to the front if not.
    bool acceptsHostPage();
    bool storeOrAsk();
    bool replaces(const TaskConflict& conflict);
    int current() const;
    void turnBy(int step);

    TaskSetup& m_setup;
    QListWidget* m_titles;
    QLabel* m_heading;
    QStackedWidget* m_stack;
    std::vector<PageArea*> m_areas; ///< the last one has the host's page
    HostPage* m_hostPage = nullptr;
};

} // namespace zn::arkin
