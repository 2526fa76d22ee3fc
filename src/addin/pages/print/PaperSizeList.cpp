#include "addin/pages/print/PaperSizeList.h"

#include "addin/pages/frame/Images.h"
#include "qtglue/Texts.h"

#include <QCompleter>
#include <QHeaderView>
#include <QLineEdit>

namespace zn {

QWidget* FocusEdit::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
{
    if (index.column() != column)
        return nullptr;
    auto* edit = new QLineEdit(parent);
    edit->setObjectName("focusEdit");
    edit->setAccessibleName(m_name);
    edit->setFrame(false);
    auto* offers = new QCompleter(m_offers, edit);
    offers->setCaseSensitivity(Qt::CaseInsensitive);
    edit->setCompleter(offers);
    return edit;
}

PaperSizeList::PaperSizeList(QWidget* parent)
    : QTreeWidget(parent)
    , m_edit(new FocusEdit(this))
{
    setRootIsDecorated(false);
    setAllColumnsShowFocus(true);
    setUniformRowHeights(true);
    setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents); // all sizes at once, if there is room
    setColumnCount(2);
    setItemDelegate(m_edit);
    setEditTriggers(QAbstractItemView::EditKeyPressed);
    for (const PaperSize& size : paperSizes) {
        if (!isShown(size))
            continue;
        auto* row = new QTreeWidgetItem(this, {shown(size.name), QString()});
        row->setIcon(0, image("PNG_FILE"));
        row->setData(0, Qt::UserRole, size.code);
        row->setFlags(row->flags() | Qt::ItemIsEditable);
    }
    setCurrentItem(topLevelItem(0), FocusEdit::column);
    connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* row) {
        setCurrentItem(row, FocusEdit::column);
        editItem(row, FocusEdit::column);
    });
}

void PaperSizeList::setHeaders(const QString& size, const QString& printer)
{
    setHeaderLabels({size, printer});
    m_edit->setSpokenName(printer);
}

const PaperSize& PaperSizeList::sizeOf(int row) const
{
    return *findPaperSize(topLevelItem(row)->data(0, Qt::UserRole).toInt());
}

Text PaperSizeList::printer(int row) const { return typed(topLevelItem(row)->text(FocusEdit::column)); }

void PaperSizeList::setPrinter(int row, const Text& printer)
{
    topLevelItem(row)->setText(FocusEdit::column, shown(printer));
}

void PaperSizeList::finishEdit()
{
    if (QWidget* edit = indexWidget(currentIndex())) {
        commitData(edit);
        closeEditor(edit, QAbstractItemDelegate::NoHint);
    }
}

void PaperSizeList::resizeEvent(QResizeEvent* event)
{
    QTreeWidget::resizeEvent(event);
    header()->resizeSection(0, std::max(viewport()->width() / 5, header()->sectionSizeHint(0)));
}

} // namespace zn
