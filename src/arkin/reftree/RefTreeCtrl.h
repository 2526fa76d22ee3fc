#pragma once

#include "contracts/host/XRefTree.h"

#include <QPointer>

namespace zn::arkin {

class RefTreeModel;
class RefTreeView;

class RefTreeCtrl final : public zn::IXRefTreeListCtrl {
public:
    ~RefTreeCtrl() override;

    zn::Status Create(
        std::int32_t parentWindow, zn::TextView name, zn::IFileRefCmd& commands, std::int32_t& window) override;
    zn::Status SetRows(const std::vector<std::shared_ptr<zn::IFileRefItem>>& roots) override;
    zn::Status Refresh() override;

private:
    void tellExpanded(const class QModelIndex& index, bool expanded);

    QPointer<RefTreeView> m_view;
    RefTreeModel* m_model = nullptr; ///< the view's
    zn::IFileRefCmd* m_commands = nullptr;
    bool m_isFilling = false; ///< what expands now does so by the add-in's own wish
};

} // namespace zn::arkin
