#pragma once

#include "addin/pages/lists/VListCtrlItem.h"

#include <deque>
#include <functional>
#include <QAbstractTableModel>
#include <QStringList>

namespace zn {

/// The rows of a `VListCtrl`, between its owner and the toolkit's view.
class VListModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// What is done with a failure of sorting, while the exception is handled.
    void onFailure(std::function<void()> tell) { m_tellFailure = std::move(tell); }
    void setImages(ImageListRef images) { m_images = std::move(images); }
    void addColumn(const QString& title);

    /// Nothing shows before `showRows`, which must follow before anything else, so that many rows cost one repaint.
    void insertItem(int position, VListCtrlItemRef row);
    void showRows();
    void removeItem(int position);
    void clear();
    const std::deque<VListCtrlItemRef>& rows() const { return m_rows; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Rows of the same text keep their order. A negative column leaves everything as it is.
    void sort(int column, Qt::SortOrder order) override;

private:
    void takeOrder(const std::vector<int>& numbers);

    std::function<void()> m_tellFailure = [] {};
    ImageListRef m_images;
    QStringList m_columns;
    std::deque<VListCtrlItemRef> m_rows; ///< new rows come in at its beginning
    int m_shown = 0;
};

} // namespace zn
