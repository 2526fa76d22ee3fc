#pragma once

#include "addin/files/CardMapping.h"
#include "addin/variables/CardVariables.h"
#include "base/Text.h"

#include <memory>
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

using CardVariables = std::shared_ptr<const std::vector<CardVariable>>;

/// The choices of a combo box: fixed sources, then all card variables. A vault may have thousands of these, so nothing
/// is made of them but what is seen.
class CardChoices final : public QAbstractListModel {
public:
    CardChoices(std::vector<CardChoice> fixed, CardVariables variables, QObject* parent);

    CardChoice at(int row) const;
    /// The first row with exactly this text; -1 if there is none.
    int rowOf(const QString& text) const;
    /// The row of a fixed source; -1 if there is none.
    int rowOf(CardSourceKind kind) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<CardChoice> m_fixed;
    CardVariables m_variables;
    QIcon m_variableIcon;
};

/// The sources that need no card variable, in the order in which they are offered, with their labels and icons.
std::vector<CardChoice> fixedCardSources(PageEnvironment& environment);
QIcon cardVariableIcon();

} // namespace zn
