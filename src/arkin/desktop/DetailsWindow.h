#pragma once

#include "arkin/desktop/PageDialog.h"

class QLabel;
class QPlainTextEdit;

namespace zn::arkin {

class TaskDetails;

/// The add-in's page about one run, and what the run says about its files. "Refresh", or F5, has the page made anew; it
/// doesn't move by itself.
class DetailsWindow : public PageDialog {
public:
    /// Opens the page. Raises the add-in's failure. `details` outlives the window, which closes it in its destructor.
    explicit DetailsWindow(TaskDetails& details);
    ~DetailsWindow() override;

private:
    void open();
    void showMessages();

    TaskDetails& m_details;
    QLabel* m_heading;
    PageArea* m_area = nullptr;
    QLabel* m_messagesTitle;
    QPlainTextEdit* m_messages;
};

} // namespace zn::arkin
