#pragma once

#include "arkin/desktop/PageDialog.h"

class QLabel;

namespace zn::arkin {

class TaskDetails;

/// The add-in's page about one run. "Refresh", or F5, has the page made anew; it doesn't move by itself.
class DetailsWindow : public PageDialog {
public:
    /// Opens the page. Raises the add-in's failure. `details` outlives the window, which closes it in its destructor.
    explicit DetailsWindow(TaskDetails& details);
    ~DetailsWindow() override;

private:
    void open();

    TaskDetails& m_details;
    QLabel* m_heading;
    PageArea* m_area = nullptr;
};

} // namespace zn::arkin
