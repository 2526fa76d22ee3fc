#pragma once

#include "arkin/desktop/pictures/DailyHost.h"

#include <optional>
#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QTabWidget;
class QTreeWidget;

namespace zn::arkin {

class AuditPane;
class PictureMaker;
class PicturePane;

/// What one run does, and what it has told: how far it is, each output, with the chosen one's picture, its
/// messages, its log, and with what it was done.
class RunPane : public QWidget {
public:
    explicit RunPane(const DailyHost& host, QWidget* parent = nullptr);

    /// None for no run, or several. Reads what has changed of the run that is shown already.
    void show(const std::optional<RunInfo>& run, std::int64_t now);

    /// The local path of an output that the user wants to see.
    std::function<void(const zn::Text& path)> open;

private:
    void clear();
    void showProgress(const RunInfo& run, std::int64_t now);
    void showResults(const RunInfo& run);
    void showPicture();
    void showMessages(const RunInfo& run);
    void showLog(const RunInfo& run);

    const DailyHost& m_host;
    std::int32_t m_run = 0;
    std::size_t m_results = 0;
    std::size_t m_messagesShown = 0;
    std::int64_t m_logTime = 0;
    QLabel* m_heading;
    QProgressBar* m_progress;
    QLabel* m_pace;
    QTabWidget* m_tabs;
    QTreeWidget* m_files;
    PicturePane* m_picture;
    PictureMaker* m_pictures;
    QPlainTextEdit* m_messages;
    QPlainTextEdit* m_log;
    AuditPane* m_audit;
};

} // namespace zn::arkin
