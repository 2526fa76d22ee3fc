#pragma once

#include "arkin/tasks/TaskStore.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;

namespace zn::arkin {

/// What the host itself keeps of a task: the longest time for one file, whether outputs that are as the vault has them
/// make versions, and who is told of a run's end.
class HostPage : public QWidget {
public:
    explicit HostPage(const TaskDefinition& task);

    /// Whether the settings can be stored. If not, the user has been told why, and the control in question has the
    /// page's focus.
    bool validate();
    HostSettings settings() const;

private:
    QWidget* makeLimit(std::int32_t seconds);
    QWidget* makeVersions();
    QWidget* makeNotices();

    QCheckBox* m_isLimited;
    QSpinBox* m_number;
    QComboBox* m_unit;
    QCheckBox* m_keepsIdentical;
    QLineEdit* m_failed;
    QLineEdit* m_ended;
};

} // namespace zn::arkin
