#pragma once

#include "arkin/tasks/TaskStore.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;

namespace zn::arkin {

/// What the host itself keeps of a task: the longest time for one file, and who is told of a run's end.
class HostPage : public QWidget {
public:
    explicit HostPage(const TaskDefinition& task);

    /// Whether the settings can be stored. If not, the user has been told why, and the control in question has the
    /// page's focus.
    bool validate();
    std::int32_t fileLimit() const;
    Notices notices() const;

private:
    QWidget* makeLimit(std::int32_t seconds);
    QWidget* makeNotices();

    QCheckBox* m_isLimited;
    QSpinBox* m_number;
    QComboBox* m_unit;
    QLineEdit* m_failed;
    QLineEdit* m_ended;
};

} // namespace zn::arkin
