#pragma once

#include "addin/flows/PageFactory.h"
#include "addin/pages/frame/LexWnd.h"

#include <QPointer>
#include <QTimer>

#include <utility>

namespace zn {

/// A property page, or a part of one: a child window with its own texts, which reads and writes task variables.
/// The constructor makes the controls with their defaults.
class Page : public QWidget, protected LexWnd {
public:
    /// Replaces the defaults by what is stored on the definition or run. An absent variable leaves its default. Raises
    /// the host's failure and failed conversions; what was read before is shown then.
    virtual void load(const ObjectRef& task) = 0;
    /// Whether the values are acceptable; a page that refuses has told the user and has set the focus.
    virtual bool validate() { return true; }
    /// Writes every variable and raises the first failure. Only called after `validate` was true.
    virtual void save(const ObjectRef& task) = 0;

    /// Holds the task, which holds the records of its pages, and those the add-in's object. Where a host destroys its
    /// window first, its pages may be the last to hold all of them, which must not go while a page is being destroyed:
    /// they go a moment later.
    void holdTask(ObjectRef task) { m_task = std::move(task); }
    ObjectRef letTaskGo() { return std::exchange(m_task, nullptr); }

    ~Page() override
    {
        if (m_task)
            QTimer::singleShot(0, [task = std::move(m_task)] {});
    }

protected:
    Page(PageEnvironment& environment, QWidget* parent, const char16_t* lexName)
        : QWidget(parent)
        , LexWnd(environment, *this, lexName)
    {
    }

private:
    ObjectRef m_task;
};

/// What the flows hold of a page: the window belongs to its parent, which may destroy it first.
template <class Interface, class Widget> class PageHandle : public Interface {
public:
    PageHandle(Widget* page, const ObjectRef& task)
        : m_page(page)
    {
        page->holdTask(task);
    }
    ~PageHandle() override
    {
        const ObjectRef task = m_page ? m_page->letTaskGo() : nullptr;
        delete m_page.data();
    }

    Widget* page() const { return m_page.data(); }

    std::int32_t window() const override { return m_page ? handleOf(*m_page) : 0; }
    void load(const ObjectRef& task) override { present().load(task); }
    bool validate() override { return m_page && m_page->validate(); }
    bool save(const ObjectRef& task) override
    {
        Widget& page = present();
        if (!page.validate())
            return false;
        page.save(task);
        return true;
    }

protected:
    /// The page; `E_POINTER` when its window has gone.
    Widget& present() const
    {
        if (!m_page)
            throw StatusError(E_POINTER, "The page's window has been closed.");
        return *m_page;
    }

private:
    QPointer<Widget> m_page;
};

} // namespace zn
