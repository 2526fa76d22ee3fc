#pragma once

#include "addin/pages/frame/Page.h"

namespace zn {

struct FileDetailsLook;
class VListCtrl;

/// The files of one run: what it was given, or, once it has finished, what came out. Read once, and never written.
class CFileDetailsPageDlg final : public Page {
public:
    /// `setting.task` is the run.
    CFileDetailsPageDlg(PageEnvironment& environment, QWidget* parent, const PageSetting& setting, bool finished);

    /// The list was filled when the page was made.
    void load(const ObjectRef&) override { }
    void save(const ObjectRef&) override { }

    /// Room for names and folders of a usual length.
    QSize sizeHint() const override;

private:
    std::shared_ptr<const FileDetailsLook> makeColumns();
    void fill(const PageSetting& setting, std::shared_ptr<const FileDetailsLook> look);

    TaskKind m_taskKind;
    bool m_finished;
    VListCtrl* m_list;
};

} // namespace zn
