#pragma once

#include "addin/pages/lists/VListModel.h"

#include <QTreeView>

namespace zn {

/// The program's virtual list: rows are objects that give the text and image of a column, and only those on the screen
/// are asked. A click on a column's title sorts by its texts, with an arrow in the title; a double click between two
/// titles fits the column to its texts; Ctrl+C copies the selected rows as lines with tabs. The list's menu (the menu
/// key, or Shift+F10) sorts without a mouse.
class VListCtrl : public QTreeView {
public:
    explicit VListCtrl(QWidget* parent = nullptr);

    /// What is done with a failure of sorting, while the exception is handled.
    void onFailure(std::function<void()> tell) { m_model.onFailure(std::move(tell)); }
    /// The images whose numbers the rows give.
    void setImages(ImageListRef images);
    /// Appends a column, `width` tenths of the list's width wide until the user changes it, but never narrower than
    /// its title. Columns of more than ten tenths together share the width in that proportion.
    void addColumn(const QString& title, int width);

    /// Puts a row in at a position. It shows with the next `showRows`, which must follow before anything else.
    void insertItem(int position, VListCtrlItemRef row);
    /// Takes over the number of rows and repaints.
    void showRows();
    void removeItem(int position);
    void removeAllItems();
    int itemCount() const;
    VListCtrlItem& item(int position) const;
    /// Positions of the selected rows, the first first.
    std::vector<int> selectedItems() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void applyWidths();
    void copySelection();
    void sortBy(int column);

    VListModel m_model;
    std::vector<int> m_widths; ///< of the columns in units
    bool m_widthsAreOurs = false;
    bool m_userChangedWidths = false;
};

} // namespace zn
