#pragma once

#include "arkin/desktop/PageDialog.h"

#include <vector>

class QLabel;
class QListWidget;
class QStackedWidget;

namespace zn::arkin {

class TaskSetup;
struct TaskConflict;

/// A task's properties: the add-in's pages under their titles, with OK and Cancel. OK stores what the pages write; a
/// page that refuses, a failure, and somebody else's change of the same task leave the dialog open with everything as
/// typed.
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
    /// The user wants another page; the one in front may want to stay.
    void turnTo(int index);
    /// Brings a page to the front, whatever the one before it says.
    void bringToFront(int index);
    void showRefusing(const zn::Text& title);
    bool storeOrAsk();
    bool replaces(const TaskConflict& conflict);
    int current() const;
    void turnBy(int step);

    TaskSetup& m_setup;
    QListWidget* m_titles;
    QLabel* m_heading;
    QStackedWidget* m_stack;
    std::vector<PageArea*> m_areas;
};

} // namespace zn::arkin
