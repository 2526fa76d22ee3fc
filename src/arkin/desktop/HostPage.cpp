#include "arkin/desktop/HostPage.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/tasks/Notice.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

constexpr std::int32_t unitSeconds[] = {1, 60, 3600};
constexpr std::int32_t longest = 30 * 24 * 3600;
constexpr std::int32_t usual = 600;

/// The largest unit in which the time is a whole number.
int unitOf(std::int32_t seconds)
{
    int unit = 2;
    while (seconds % unitSeconds[unit] != 0)
        --unit;
    return unit;
}

QLabel* makeHint(const QString& text)
{
    auto* const hint = new QLabel(text);
    hint->setTextFormat(Qt::PlainText);
    hint->setWordWrap(true);
    return hint;
}

QLineEdit* makeEdit(const char* name, const std::string& text)
{
    auto* const edit = new QLineEdit(QString::fromStdString(text));
    edit->setObjectName(name);
    edit->setPlaceholderText(own("nobody"));
    edit->setMinimumWidth(40 * edit->fontMetrics().averageCharWidth());
    return edit;
}

} // namespace

HostPage::HostPage(const TaskDefinition& task)
    : m_isLimited(new QCheckBox(own("&Give up a file after")))
    , m_number(new QSpinBox)
    , m_unit(new QComboBox)
    , m_keepsIdentical(new QCheckBox(own("&No version of equal outputs")))
    , m_failed(makeEdit("whenFailed", task.host.notices.failed))
    , m_ended(makeEdit("whenEnded", task.host.notices.ended))
{
    setObjectName("hostPage");
    m_keepsIdentical->setObjectName("keepsIdentical");
    m_keepsIdentical->setChecked(task.host.keepsIdentical);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(makeLimit(task.host.fileLimit));
    layout->addWidget(makeVersions());
    layout->addWidget(makeNotices());
    layout->addStretch();
}

QWidget* HostPage::makeLimit(std::int32_t seconds)
{
    const int unit = unitOf(seconds == 0 ? usual : seconds);
    m_isLimited->setObjectName("isLimited");
    m_isLimited->setChecked(seconds != 0);
    m_number->setObjectName("limitNumber");
    m_number->setAccessibleName(own("Longest time for one file"));
    m_unit->setObjectName("limitUnit");
    m_unit->setAccessibleName(own("Unit of the longest time"));
    m_unit->addItems({own("seconds"), own("minutes"), own("hours")});
    const auto fitRange = [this] { m_number->setRange(1, longest / unitSeconds[m_unit->currentIndex()]); };
    connect(m_unit, &QComboBox::currentIndexChanged, this, fitRange);
    m_unit->setCurrentIndex(unit);
    fitRange();
    m_number->setValue((seconds == 0 ? usual : seconds) / unitSeconds[unit]);
    for (QWidget* control : {static_cast<QWidget*>(m_number), static_cast<QWidget*>(m_unit)}) {
        control->setEnabled(m_isLimited->isChecked());
        connect(m_isLimited, &QCheckBox::toggled, control, &QWidget::setEnabled);
    }
    auto* const group = new QGroupBox(own("Longest time for one file"));
    auto* const row = new QHBoxLayout;
    row->addWidget(m_isLimited);
    row->addWidget(m_number);
    row->addWidget(m_unit);
    row->addStretch();
    auto* const column = new QVBoxLayout(group);
    column->addLayout(row);
    column->addWidget(makeHint(own("The run goes on with the next file then. The file counts as failed.")));
    return group;
}

QWidget* HostPage::makeVersions()
{
    auto* const group = new QGroupBox(own("Versions"));
    auto* const column = new QVBoxLayout(group);
    column->addWidget(m_keepsIdentical);
    column->addWidget(makeHint(
        own("Of an output that is as its latest version has it; its card and references are brought up to date.")));
    return group;
}

QWidget* HostPage::makeNotices()
{
    auto* const group = new QGroupBox(own("Notices"));
    auto* const column = new QVBoxLayout(group);
    auto* const fields = new QFormLayout;
    fields->setRowWrapPolicy(QFormLayout::WrapLongRows);
    fields->addRow(own("Tell of runs with &failures:"), m_failed);
    fields->addRow(own("Tell of &every run's end:"), m_ended);
    column->addLayout(fields);
    column->addWidget(
        makeHint(own("A command with the full path of its program, or a mail address such as mail:anna@example.org.")));
    return group;
}

bool HostPage::validate()
{
    for (QLineEdit* edit : {m_failed, m_ended}) {
        try {
            requireNotice(edit->text().trimmed().toStdString());
        } catch (const zn::StatusError& error) {
            edit->setFocus(Qt::OtherFocusReason);
            tell(this, shown(std::string_view(error.what())));
            return false;
        }
    }
    return true;
}

HostSettings HostPage::settings() const
{
    HostSettings settings;
    if (m_isLimited->isChecked())
        settings.fileLimit = m_number->value() * unitSeconds[m_unit->currentIndex()];
    settings.keepsIdentical = m_keepsIdentical->isChecked();
    settings.notices = {m_failed->text().trimmed().toStdString(), m_ended->text().trimmed().toStdString()};
    return settings;
}

} // namespace zn::arkin
