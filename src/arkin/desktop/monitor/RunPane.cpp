#include "arkin/desktop/monitor/RunPane.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/AuditPane.h"
#include "arkin/desktop/monitor/RunTexts.h"
#include "arkin/desktop/pictures/PictureMaker.h"
#include "arkin/desktop/pictures/PicturePane.h"
#include "arkin/store/Vault.h"
#include "arkin/tasks/RunLog.h"
#include "base/Paths.h"

#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

constexpr int pathRole = Qt::UserRole;
constexpr int versionRole = Qt::UserRole + 1;

QPlainTextEdit* addText(QTabWidget& tabs, const char* name, const QString& title)
{
    auto* const text = new QPlainTextEdit;
    text->setObjectName(name);
    text->setAccessibleName(title);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    tabs.addTab(text, title);
    return text;
}

QString nameWithPart(const RunFileResult& result)
{
    const QString name = shown(zn::pathFileName(result.source));
    return result.part.empty() ? name : QStringLiteral("%1 (%2)").arg(name, shown(result.part));
}

/// As people write it; whole outside the vault.
QString belowRoot(const zn::Text& path, const zn::Text& root)
{
    const bool isInside = path.size() > root.size() && zn::equalNoCase(zn::TextView(path).substr(0, root.size()), root);
    return shown(zn::TextView(path).substr(isInside ? root.size() : 0)).replace('\\', '/');
}

} // namespace

RunPane::RunPane(const DailyHost& host, QWidget* parent)
    : QWidget(parent)
    , m_host(host)
    , m_heading(new QLabel)
    , m_progress(new QProgressBar)
    , m_pace(new QLabel)
    , m_tabs(new QTabWidget)
    , m_files(new QTreeWidget)
    , m_picture(new PicturePane)
    , m_pictures(new PictureMaker(host, this))
    , m_audit(new AuditPane(host))
{
    setObjectName("run");
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    m_heading->setObjectName("heading");
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setWordWrap(true);
    m_heading->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_heading);
    m_progress->setObjectName("progress");
    m_progress->setAccessibleName(own("Progress"));
    layout->addWidget(m_progress);
    m_pace->setObjectName("pace");
    m_pace->setTextFormat(Qt::PlainText);
    layout->addWidget(m_pace);
    m_tabs->setObjectName("runTabs");
    m_files->setObjectName("results");
    m_files->setAccessibleName(own("Files"));
    m_files->setRootIsDecorated(false);
    m_files->setUniformRowHeights(true);
    m_files->setAllColumnsShowFocus(true);
    m_files->setHeaderLabels(
        {own("Result"), own("File"), own("Output"), own("Version"), own("Duration"), own("Reason")});
    giveTitlesRoom(*m_files);
    m_picture->setObjectName("outputPicture");
    auto* const outputs = new QSplitter;
    outputs->addWidget(m_files);
    outputs->addWidget(m_picture);
    outputs->setStretchFactor(0, 1);
    m_tabs->addTab(outputs, own("Files"));
    m_pictures->shown = [this](const QImage& picture) { m_picture->show(picture); };
    m_pictures->told = [this](const QString& sentence) { m_picture->tell(sentence); };
    connect(m_files, &QTreeWidget::currentItemChanged, this, [this] { inSlot(this, [this] { showPicture(); }); });
    m_messages = addText(*m_tabs, "messages", own("Messages"));
    m_log = addText(*m_tabs, "log", own("Log"));
    m_tabs->addTab(m_audit, own("Audit"));
    layout->addWidget(m_tabs, 1);
    connect(m_files, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* row) {
        inSlot(this, [&] {
            const zn::Text path = typed(row->data(0, pathRole).toString());
            if (open && !path.empty())
                open(path);
        });
    });
    clear();
}

void RunPane::clear()
{
    m_run = 0;
    m_results = m_messagesShown = 0;
    m_logTime = 0;
    m_heading->clear();
    m_progress->hide();
    m_pace->hide();
    m_files->clear();
    m_messages->clear();
    m_log->clear();
    m_audit->setRun(0);
    setEnabled(false);
}

void RunPane::show(const std::optional<RunInfo>& run, std::int64_t now)
{
    if (!run || run->id != m_run)
        clear();
    if (!run)
        return;
    setEnabled(true);
    m_run = run->id;
    const QString state = runStateText(*run, now);
    m_heading->setText(run->resultText.empty() ? state : QStringLiteral("%1: %2").arg(state, shown(run->resultText)));
    showProgress(*run, now);
    showResults(*run);
    showMessages(*run);
    showLog(*run);
    m_audit->setRun(run->id);
}

void RunPane::showProgress(const RunInfo& run, std::int64_t now)
{
    const bool works = !run.ended() && run.progressTotal > 0;
    m_progress->setVisible(works);
    m_progress->setRange(0, run.progressTotal);
    m_progress->setValue(run.progressPosition);
    m_progress->setFormat(progressText(run));
    QStringList parts;
    if (!run.ended() && !run.progressText.empty())
        parts << shown(zn::pathFileName(run.progressText));
    if (const QString time = workTimeText(run, now); !time.isEmpty())
        parts << time;
    if (run.taken())
        parts << own("by process %1 on %2").arg(run.owner.process).arg(shown(run.owner.host));
    m_pace->setText(parts.join(QStringLiteral(" · ")));
    m_pace->setVisible(!parts.isEmpty());
}

void RunPane::showResults(const RunInfo& run)
{
    RunStore runs(m_host.tasks.database, m_host.tasks.vaultId);
    const auto results = runs.results(run.id);
    if (results.size() == m_results)
        return;
    m_results = results.size();
    m_files->clear();
    const zn::Text root = zn::withoutTrailingSeparators(m_host.tasks.opened->info().root) + u'\\';
    QList<QTreeWidgetItem*> rows;
    for (const RunFileResult& result : results) {
        auto* const row
            = new QTreeWidgetItem({outcomeWord(result.outcome), nameWithPart(result), belowRoot(result.output, root),
                result.outputVersion == 0 ? QString() : QString::number(result.outputVersion),
                QStringLiteral("%L1 s").arg(result.seconds, 0, 'f', 1), shown(result.sentence)});
        row->setToolTip(1, shown(result.source));
        row->setToolTip(2, shown(result.output));
        row->setToolTip(5, shown(result.sentence));
        row->setData(0, pathRole, shown(result.output.empty() ? result.source : result.output));
        row->setData(0, versionRole, result.output.empty() ? result.sourceVersion : result.outputVersion);
        rows << row;
    }
    m_files->addTopLevelItems(rows);
    for (int column = 0; column + 1 < m_files->columnCount(); ++column)
        m_files->resizeColumnToContents(column);
}

void RunPane::showPicture()
{
    const auto* const row = m_files->currentItem();
    const zn::Text path = row ? typed(row->data(0, pathRole).toString()) : zn::Text();
    const auto place = path.empty() ? std::nullopt : m_host.tasks.opened->find(path);
    const std::int32_t latest = place ? m_host.tasks.opened->file(place->fileId).latestVersion : 0;
    if (latest == 0) { // printed, outside the vault, or deleted since
        m_pictures->forget();
        m_picture->tell({});
        return;
    }
    const std::int32_t made = row->data(0, versionRole).toInt();
    m_pictures->ask(*place, made == 0 ? latest : made);
}

void RunPane::showMessages(const RunInfo& run)
{
    RunStore runs(m_host.tasks.database, m_host.tasks.vaultId);
    const auto messages = runs.messages(run.id);
    if (messages.size() == m_messagesShown)
        return;
    m_messagesShown = messages.size();
    QStringList lines;
    for (const RunMessage& message : messages)
        lines << (message.path.empty() ? shown(message.sentence)
                                       : QStringLiteral("%1: %2").arg(shown(message.path), shown(message.sentence)));
    m_messages->setPlainText(lines.join('\n'));
}

void RunPane::showLog(const RunInfo& run)
{
    RunStore runs(m_host.tasks.database, m_host.tasks.vaultId);
    Vault& vault = *m_host.tasks.opened;
    const auto path = runLogPath(runs, run, vault.info().root);
    if (path.empty()) {
        m_log->setPlaceholderText(own("The task keeps no log."));
        return;
    }
    const auto known = m_host.tasks.files.attributes(path);
    if (m_logTime != 0 && (!known || known->modifiedNs == m_logTime))
        return;
    const auto text = readRunLog(vault, m_host.tasks.files, path);
    m_log->setPlaceholderText(own("The run has logged nothing."));
    m_log->setPlainText(text ? QString::fromStdString(*text) : QString());
    const auto read = m_host.tasks.files.attributes(path);
    m_logTime = read ? read->modifiedNs : -1;
}

} // namespace zn::arkin
