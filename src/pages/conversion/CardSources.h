#pragma once

#include "base/Text.h"
#include "files/CardMapping.h"

#include <QAbstractListModel>
#include <QIcon>
#include <vector>

namespace zn {

class PageEnvironment;

/// A choice of a list on the file card page: what it shows, and the code of the source that it stands for.
struct CardChoice {
    QString text;
    QIcon icon;
    CardSourceKind kind = CardSourceKind::Variable;
};

/// The choices of a combo box. A vault may have thousands of card variables, which a model of its own shows without
/// making an item of each.
class CardChoices final : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void fill(std::vector<CardChoice> choices);
    const CardChoice& at(int row) const { return m_choices[static_cast<std::size_t>(row)]; }
    /// The first row with exactly this text; -1 if there is none.
    int rowOf(const QString& text) const;
    /// The first row of this source; -1 if there is none.
    int rowOf(CardSourceKind kind) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<CardChoice> m_choices;
};

/// The sources that need no card variable, in the order in which they are offered, with their labels and icons.
std::vector<CardChoice> fixedCardSources(PageEnvironment& environment);
/// The choice that stands for a card variable.
CardChoice cardVariableChoice(TextView name);

} // namespace zn
