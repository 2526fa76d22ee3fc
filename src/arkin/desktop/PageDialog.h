#pragma once

#include "arkin/desktop/PageArea.h"
#include "qtglue/PageInput.h"
#include "qtglue/Windows.h"

#include <QDialog>

class QDialogButtonBox;
class QVBoxLayout;

namespace zn::arkin {

/// What the host's dialogs around pages have in common: a place for the pages above a row of buttons, and a size that
/// follows the pages as long as the user doesn't give it another, within the screen.
class PageDialog : public QDialog {
protected:
    /// `turn` is for a dialog with several pages.
    explicit PageDialog(QWidget* parent = nullptr, zn::TurnPages turn = {});

    /// The handle that add-ins get as the parent of their pages.
    std::int32_t handle() const { return zn::handleOf(*this); }
    /// Makes the area of a page and follows its size.
    PageArea* makeArea(const zn::Text& title, std::int32_t window);
    QVBoxLayout& content() { return *m_content; }
    QDialogButtonBox& buttons() { return *m_buttons; }
    /// Lets Tab go from `first`, if there is one, through the pages to everything else.
    void orderTabs(const QWidget* first = nullptr);
    /// Takes the size that the pages want, now or, if the dialog is shown, as soon as they are laid out.
    void fit();

    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    /// A page of a launch tells its new format to the window that it was made for.
    bool event(QEvent* event) override;

private:
    void fitNow();

    QVBoxLayout* m_content;
    QDialogButtonBox* m_buttons;
    QSize m_fitted; ///< the last size that wasn't the user's
    bool m_fitting = false;
};

} // namespace zn::arkin
