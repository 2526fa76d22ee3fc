#include "arkin/desktop/monitor/AuditPane.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/RunTexts.h"
#include "base/Paths.h"

#include <algorithm>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

QString workText(const RunWork& work)
{
    QString text = own("Worked on by process %1 on %2 since %3")
                       .arg(work.process)
                       .arg(shown(work.machine), momentText(work.begunAt));
    if (!work.application.name.empty())
        text += QStringLiteral(": %1 %2 (%3)")
                    .arg(shown(work.application.name), shown(work.application.version), shown(work.application.build));
    return text;
}

QString fileText(const AuditedMacro& macro)
{
    const QString name = shown(zn::pathFileName(macro.path));
    return macro.configuration.empty() ? name : QStringLiteral("%1 (%2)").arg(name, shown(macro.configuration));
}

} // namespace

AuditPane::AuditPane(const DailyHost& host, QWidget* parent)
    : QWidget(parent)
    , m_host(host)
    , m_facts(new QLabel)
    , m_settings(new QTreeWidget)
    , m_files(new QComboBox)
    , m_macro(new QPlainTextEdit)
{
    setObjectName("audit");
    m_facts->setObjectName("facts");
    m_facts->setTextFormat(Qt::PlainText);
    m_facts->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_settings->setObjectName("settings");
    m_settings->setAccessibleName(own("Settings"));
    m_settings->setRootIsDecorated(false);
    m_settings->setUniformRowHeights(true);
    m_settings->setHeaderLabels({own("Setting"), own("Value")});
    m_files->setObjectName("macroFile");
    m_files->setAccessibleName(own("File"));
    m_macro->setObjectName("macro");
    m_macro->setAccessibleName(own("Macro"));
    m_macro->setReadOnly(true);
    m_macro->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_macro->setPlaceholderText(own("No macro was carried out."));
    auto* const right = new QWidget;
    auto* const column = new QVBoxLayout(right);
    column->setContentsMargins({});
    column->addWidget(m_files);
    column->addWidget(m_macro, 1);
    auto* const sides = new QSplitter;
    sides->addWidget(m_settings);
    sides->addWidget(right);
    sides->setStretchFactor(1, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_facts);
    layout->addWidget(sides, 1);
    connect(m_files, &QComboBox::currentIndexChanged, this, [this] { inSlot(this, [this] { showMacro(); }); });
}

void AuditPane::setRun(std::int32_t runId)
{
    if (runId == m_run)
        return;
    m_run = runId;
    if (isVisible())
        inSlot(this, [this] { fill(); });
}

void AuditPane::showEvent(QShowEvent*)
{
    inSlot(this, [this] { fill(); });
}

void AuditPane::fill()
{
    const QSignalBlocker quiet(m_files);
    m_files->clear();
    m_settings->clear();
    m_facts->clear();
    m_macro->clear();
    if (m_run == 0)
        return;
    RunAudits audits(m_host.tasks.database);
    const RunAudit audit = audits.get(m_run);
    fillFacts(audit);
    for (const auto& [name, value] : audits.settings(audit)) {
        if (name == zn::scriptVariable)
            continue; // the macros below are made of it
        auto* const row = new QTreeWidgetItem(m_settings, {shown(name), shown(value.toText())});
        const bool asked = std::ranges::find(audit.asked, name) != audit.asked.end();
        QFont font = m_settings->font();
        font.setBold(asked);
        row->setFont(0, font);
        row->setToolTip(1, shown(value.toText()));
    }
    m_settings->resizeColumnToContents(0);
    for (const AuditedMacro& macro : audits.macros(m_run))
        m_files->addItem(fileText(macro));
    showMacro();
}

void AuditPane::fillFacts(const RunAudit& audit)
{
    QStringList lines{audit.machine.empty()
            ? own("Launched %1 by %2").arg(momentText(audit.launchedAt), shown(audit.userName))
            : own("Launched %1 by %2 on %3")
                  .arg(momentText(audit.launchedAt), shown(audit.userName), shown(audit.machine))};
    if (audit.againOf != 0)
        lines.first() += own(", to do run %1 again").arg(audit.againOf);
    for (const RunWork& work : audit.works)
        lines << workText(work);
    if (!audit.asked.empty())
        lines << own("Settings in bold were chosen at the launch.");
    m_facts->setText(lines.join('\n'));
}

void AuditPane::showMacro()
{
    m_macro->clear();
    const int chosen = m_files->currentIndex();
    if (chosen < 0)
        return;
    RunAudits audits(m_host.tasks.database);
    const auto macros = audits.macros(m_run);
    m_macro->setPlainText(
        QString::fromStdString(audits.macroText(audits.get(m_run), macros.at(static_cast<std::size_t>(chosen)))));
}

} // namespace zn::arkin
