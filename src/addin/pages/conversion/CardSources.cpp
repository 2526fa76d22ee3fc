#include "addin/pages/conversion/CardSources.h"

#include "addin/libraries/flowicons/FlowIcons.h"
#include "addin/pages/frame/Images.h"
#include "addin/pages/frame/PageEnvironment.h"
#include "qtglue/Texts.h"

#include <algorithm>

namespace zn {

namespace {

struct Source {
    CardSourceKind kind;
    int string;
    const char16_t* label;
    const char* image; ///< null for the shared folder icon
};

constexpr Source sources[] = {
    {CardSourceKind::SourcePath, 23, u"Source File Name", "PNG_FILE"},
    {CardSourceKind::SourceFolder, 81, u"Source File Path", nullptr},
    {CardSourceKind::Configuration, 82, u"Source Configuration", "PNG_CONFIG_SELECTED"},
    {CardSourceKind::Revision, 83, u"Source Revision Number", "PNG_CHECK_MARK"},
    {CardSourceKind::Version, 84, u"Source Version Number", "PNG_VERSION_NUMBER"},
    {CardSourceKind::WorkflowState, 85, u"Source Workflow State", "PNG_WORKFLOW"},
    {CardSourceKind::Now, 86, u"Conversion Date and Time", "PNG_DATE_TIME"},
    {CardSourceKind::FreeText, 87, u"Free Text", "PNG_FILE_MODIFIED"},
};

} // namespace

CardChoices::CardChoices(std::vector<CardChoice> fixed, CardVariables variables, QObject* parent)
    : QAbstractListModel(parent)
    , m_fixed(std::move(fixed))
    , m_variables(std::move(variables))
    , m_variableIcon(cardVariableIcon())
{
}

CardChoice CardChoices::at(int row) const
{
    const auto place = static_cast<std::size_t>(row);
    if (place < m_fixed.size())
        return m_fixed[place];
    return {shown((*m_variables)[place - m_fixed.size()].name), m_variableIcon, CardSourceKind::Variable};
}

int CardChoices::rowOf(const QString& text) const
{
    const auto fixed
        = std::find_if(m_fixed.begin(), m_fixed.end(), [&](const CardChoice& choice) { return choice.text == text; });
    if (fixed != m_fixed.end())
        return static_cast<int>(fixed - m_fixed.begin());
    const Text name = typed(text);
    const auto variable = std::find_if(
        m_variables->begin(), m_variables->end(), [&](const CardVariable& each) { return each.name == name; });
    if (variable == m_variables->end())
        return -1;
    return static_cast<int>(m_fixed.size()) + static_cast<int>(variable - m_variables->begin());
}

int CardChoices::rowOf(CardSourceKind kind) const
{
    const auto found
        = std::find_if(m_fixed.begin(), m_fixed.end(), [&](const CardChoice& choice) { return choice.kind == kind; });
    return found == m_fixed.end() ? -1 : static_cast<int>(found - m_fixed.begin());
}

int CardChoices::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_fixed.size() + m_variables->size());
}

QVariant CardChoices::data(const QModelIndex& index, int role) const
{
    const CardChoice choice = at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return choice.text;
    case Qt::DecorationRole:
        return choice.icon;
    case Qt::UserRole:
        return static_cast<int>(choice.kind);
    default:
        return {};
    }
}

std::vector<CardChoice> fixedCardSources(PageEnvironment& environment)
{
    std::vector<CardChoice> choices;
    for (const Source& source : sources) {
        choices.push_back({environment.text(source.string, source.label),
            source.image ? image(QLatin1String(source.image)) : environment.flowIcon(flowicons::Picture::Folder),
            source.kind});
    }
    return choices;
}

QIcon cardVariableIcon() { return image(QStringLiteral("PNG_ALL_CARD")); }

} // namespace zn
