#pragma once

#include "addin/flows/PageFactory.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace zn {

class PageEnvironment;

/// The folder of a task's error logs: an edit, which begins with a folder that bears the task's name, a button that
/// browses the vault, and a note below. The controls are the page's, which gives them their numbers and texts.
class LogFolderRow final : public QWidget {
public:
    struct Controls {
        QLabel* label;
        QLineEdit* path;
        QPushButton* browse;
        QLabel* note;
    };
    /// What becomes of a folder that the user picks.
    enum class Picked {
        WholePath,
        BelowRoot, ///< without the vault's root, so that it holds wherever the vault's local view lies
    };

    /// `browseTitle` is that of the host's dialog.
    LogFolderRow(QWidget& page, PageEnvironment& environment, const PageSetting& setting, const Controls& controls,
        const QString& browseTitle, Picked picked);

    /// Shows the folder of a new task. Raises the host's failure.
    void fill();
    void load(const ObjectRef& task);
    void save(const ObjectRef& task);

private:
    void browse();
    Text belowRoot(const Text& path) const;

    QWidget& m_page;
    PageEnvironment& m_environment;
    const PageSetting m_setting;
    QLineEdit* m_path;
    const QString m_browseTitle;
    const Picked m_picked;
};

} // namespace zn
