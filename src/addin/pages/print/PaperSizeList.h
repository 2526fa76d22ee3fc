#pragma once

#include "addin/pages/print/PaperSizes.h"

#include <QStyledItemDelegate>
#include <QTreeWidget>

namespace zn {

/// An edit in place over the second column of a list. Its text goes back to the row when it loses the focus or at
/// Enter; Escape leaves the row as it was.
class FocusEdit final : public QStyledItemDelegate {
public:
    explicit FocusEdit(QObject* parent)
        : QStyledItemDelegate(parent)
    {
    }

    static constexpr int column = 1;

    /// What the edit offers while a person types, and its name for a screen reader.
    void setOffers(const QStringList& texts) { m_offers = texts; }
    void setSpokenName(const QString& name) { m_name = name; }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    QStringList m_offers;
    QString m_name;
};

/// The paper sizes that lists show, each with a printer, in the order of their table. A click on a row opens the edit
/// over its printer.
class PaperSizeList final : public QTreeWidget {
public:
    explicit PaperSizeList(QWidget* parent);

    void setHeaders(const QString& size, const QString& printer);
    void setOffers(const QStringList& printers) { m_edit->setOffers(printers); }

    /// The size of a row, from 0 to `topLevelItemCount`.
    const PaperSize& sizeOf(int row) const;
    Text printer(int row) const;
    void setPrinter(int row, const Text& printer);
    /// Takes over what stands in an edit that is still open.
    void finishEdit();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    FocusEdit* m_edit;
};

} // namespace zn
