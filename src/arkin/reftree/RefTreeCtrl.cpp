#include "arkin/reftree/RefTreeCtrl.h"

#include "arkin/reftree/RefTreeModel.h"
#include "arkin/reftree/RefTreeView.h"
#include "qtglue/Texts.h"
#include "qtglue/Windows.h"

#include <QScopedValueRollback>

namespace zn::arkin {

using zn::E_POINTER;
using zn::S_OK;
using zn::Status;

namespace {

template <class Work> Status guarded(Work work) noexcept
{
    try {
        return work();
    } catch (...) {
        return zn::currentExceptionStatus();
    }
}

} // namespace

RefTreeCtrl::~RefTreeCtrl() { delete m_view.data(); }

Status RefTreeCtrl::Create(
    std::int32_t parentWindow, zn::TextView name, zn::IFileRefCmd& commands, std::int32_t& window)
{
    return guarded([&] {
        QWidget* parent = zn::windowOf(parentWindow);
        if (!parent || m_view)
            return zn::E_INVALIDARG;
        m_commands = &commands;
        m_view = new RefTreeView(parent);
        m_view->setObjectName("fileTree");
        m_view->setAccessibleName(zn::shown(name));
        m_model = new RefTreeModel(m_view, [this](zn::IFileRefItem& row, bool checked) {
            const bool isTaken = !zn::failed(m_commands->OnCheck(row, checked));
            m_view->viewport()->update();
            return isTaken;
        });
        m_view->setTreeModel(*m_model);
        QObject::connect(m_view, &QTreeView::expanded, m_view, [this](const auto& row) { tellExpanded(row, true); });
        QObject::connect(m_view, &QTreeView::collapsed, m_view, [this](const auto& row) { tellExpanded(row, false); });
        // A handle makes the view a window of the system; its parents need not become ones for that.
        m_view->setAttribute(Qt::WA_DontCreateNativeAncestors);
        window = zn::handleOf(*m_view);
        return S_OK;
    });
}

Status RefTreeCtrl::SetRows(const std::vector<std::shared_ptr<zn::IFileRefItem>>& roots)
{
    return guarded([&] {
        if (!m_view)
            return E_POINTER;
        const QScopedValueRollback filling(m_isFilling, true);
        m_model->setRows(roots);
        m_view->expandMarked();
        m_view->setCurrentIndex(m_model->index(0, 0));
        return S_OK;
    });
}

Status RefTreeCtrl::Refresh()
{
    if (!m_view)
        return E_POINTER;
    m_view->viewport()->update();
    return S_OK;
}

void RefTreeCtrl::tellExpanded(const QModelIndex& index, bool expanded)
{
    if (!m_isFilling)
        m_commands->OnExpand(*m_model->item(index), expanded);
}

} // namespace zn::arkin
