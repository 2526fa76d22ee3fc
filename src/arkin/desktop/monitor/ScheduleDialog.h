#pragma once

#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/tasks/ScheduleStore.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLineEdit;
class QListWidget;
class QTimeEdit;
class QVBoxLayout;

namespace zn::arkin {

/// Asks for a new schedule: the task, its files and folders, the time, the days and the zone whose clocks count.
class ScheduleDialog : public QDialog {
public:
    explicit ScheduleDialog(const DailyHost& host, QWidget* parent = nullptr);

    /// What was accepted; without a number.
    const Schedule& schedule() const { return m_schedule; }

    /// Takes what can be scheduled; a zone that this machine doesn't know leaves the dialog open.
    void accept() override;

private:
    void addItems(QVBoxLayout& layout);
    void addTime(QVBoxLayout& layout);
    void addFiles();
    void addFolder();
    void addItem(const zn::Text& path);
    void removeItems();
    void showState();
    ScheduleTime time() const;

    const DailyHost& m_host;
    Schedule m_schedule;
    QComboBox* m_task;
    QListWidget* m_items;
    QTimeEdit* m_time;
    std::vector<QCheckBox*> m_days; ///< from Sunday
    QLineEdit* m_zone;
    QCheckBox* m_onlyChanged;
    QDialogButtonBox* m_buttons;
};

} // namespace zn::arkin
