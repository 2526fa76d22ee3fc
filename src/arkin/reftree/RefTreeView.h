#pragma once

#include <QTreeView>

namespace zn::arkin {

class RefTreeModel;

/// The tree on the screen: arrows walk and open, space ticks what is selected, "*" opens what is below.
class RefTreeView final : public QTreeView {
public:
    explicit RefTreeView(QWidget* parent);

    void setTreeModel(RefTreeModel& model);
    /// Expands the rows that want it, and what below them wants it.
    void expandMarked(const QModelIndex& parent = {});

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void tickSelected();
    void expandBelow(const QModelIndex& from);

    RefTreeModel* m_rows = nullptr;
};

} // namespace zn::arkin
