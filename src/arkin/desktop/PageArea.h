#pragma once

#include "contracts/host/Records.h"

#include <functional>
#include <QPointer>
#include <QScrollArea>

namespace zn::arkin {

/// Holds one page of an add-in. It wants as much room as the page wants, and scrolls when it gets less. The page
/// belongs to its add-in, which may destroy it first.
class PageArea : public QScrollArea {
public:
    /// Raises `StatusError` with a sentence if the handle is no window of this process.
    PageArea(const zn::Text& title, std::int32_t window, QWidget* parent);

    const zn::Text& title() const { return m_title; }
    QWidget* page() const { return m_page; }
    /// Asks the page whether it may be left for another one; it has told the user why, if not.
    bool mayLeave() const;
    /// Gives the focus to the control of the page that had it last, or to its first one.
    void takeFocus();
    /// Called when the page wants another size.
    void onResized(std::function<void()> listener) { m_resized = std::move(listener); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    QSize pageSize() const;

    zn::Text m_title;
    QPointer<QWidget> m_page;
    std::function<void()> m_resized;
};

} // namespace zn::arkin
