#pragma once

#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/tasks/RunAudit.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QTreeWidget;

namespace zn::arkin {

/// What is kept of a run as it was: who launched it and with which settings, what did its work, and the macro of each
/// file. It is read when the page comes to the front, and when
/// another run is chosen.
class AuditPane : public QWidget {
public:
    explicit AuditPane(const DailyHost& host, QWidget* parent = nullptr);

    /// 0 for none.
    void setRun(std::int32_t runId);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void fill();
    void fillFacts(const RunAudit& audit);
    void showMacro();

    const DailyHost& m_host;
    std::int32_t m_run = 0;
    QLabel* m_facts;
    QTreeWidget* m_settings;
    QComboBox* m_files;
    QPlainTextEdit* m_macro;
};

} // namespace zn::arkin
