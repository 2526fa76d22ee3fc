#include "addin/pages/conversion/FileCardPageDlg.h"

#include "addin/variables/CardVariables.h"
#include "addin/variables/TaskVariables.h"
#include "base/Format.h"
#include "qtglue/Texts.h"

#include <algorithm>
#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zn {

namespace {

enum Control : int {
    List = 301,
    AddButton = 302,
    RemoveButton = 303,
    SourceLabel = 304,
    Sources = 305,
    DestinationLabel = 306,
    Destinations = 307,
    FreeTextLabel = 308,
    FreeText = 309,
};

constexpr int selectionGroup = 0; ///< what works on the selected row

constexpr int sourceColumn = 0;
constexpr int destinationColumn = 1;
constexpr int kindRole = Qt::UserRole;

constexpr const char16_t* mappingVariable = u"FileCardData";
constexpr int shortestChoice = 30; ///< characters that a closed list shows at least

CardSourceKind kindOf(const QTreeWidgetItem& row)
{
    return static_cast<CardSourceKind>(row.data(sourceColumn, kindRole).toInt());
}

/// Lines of the stored text end with a line feed, so a free text can't hold one.
QString withoutLineEnds(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String(" "));
    for (const QChar lineEnd :
        {QChar(u'\n'), QChar(u'\r'), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)})
        text.replace(lineEnd, u' ');
    return text;
}

/// The text up to the next ";", which is cut off with it.
TextView takeField(TextView& line)
{
    const std::size_t end = line.find(u';');
    const TextView field = line.substr(0, end);
    line.remove_prefix(end == TextView::npos ? line.size() : end + 1);
    return field;
}

/// Lets a run of the task read the variable.
Status declare(IArkTaskProperties& task, std::int32_t variableId)
{
    Value value;
    const Status status = task.GetVariable(variableId, value);
    return status == S_FALSE ? task.SetVariable(variableId, Value(Text())) : status;
}

void fit(QComboBox& list)
{
    list.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list.setMinimumContentsLength(shortestChoice);
    list.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

} // namespace

CFileCardPageDlg::CFileCardPageDlg(
    PageEnvironment& environment, QWidget* parent, const std::shared_ptr<IArkVault>& vault)
    : Page(environment, parent, u"FileCardPageDlg")
    , m_list(control<QTreeWidget>(List, "cardVariables", u"Card variables of the output file"))
    , m_add(control<QPushButton>(AddButton, "addVariable", u"&Add Variable"))
    , m_remove(control<QPushButton>(RemoveButton, "removeVariable", u"&Remove Variable"))
    , m_sources(control<QComboBox>(Sources, "source"))
    , m_destinations(control<QComboBox>(Destinations, "destinationVariable"))
    , m_freeText(control<QLineEdit>(FreeText, "freeText"))
    , m_variables(std::make_shared<const std::vector<CardVariable>>(readCardVariables(vault)))
    , m_sourceChoices(new CardChoices(fixedCardSources(environment), m_variables, this))
    , m_destinationChoices(new CardChoices({}, m_variables, this))
{
    makeLayout();
    mbInitLexWnd();
    for (const int number : {int(RemoveButton), int(Sources), int(Destinations), int(FreeText)})
        mvAddControl(selectionGroup, number);
    mvEnableGroup(selectionGroup, false);
    fillLists();
    connectControls();
}

void CFileCardPageDlg::makeLayout()
{
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setHeaderLabels({ts(80, u"Source"), ts(79, u"Destination Variable")});
    m_list->header()->setSectionResizeMode(QHeaderView::Stretch);
    m_list->header()->setSectionsMovable(false);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_add);
    buttons->addWidget(m_remove);
    buttons->addStretch();

    auto* fields = new QFormLayout;
    const auto addField = [&](int number, const char* role, const char16_t* text, QWidget* field) {
        auto* label = control<QLabel>(number, role, text);
        label->setBuddy(field);
        fields->addRow(label, field);
    };
    fit(*m_sources);
    fit(*m_destinations);
    addField(DestinationLabel, "destinationLabel", u"&Destination variable:", m_destinations);
    addField(SourceLabel, "sourceLabel", u"&Source:", m_sources);
    addField(FreeTextLabel, "freeTextLabel", u"&Free text:", m_freeText);

    auto* whole = new QVBoxLayout(this);
    whole->addWidget(m_list, 1);
    whole->addLayout(buttons);
    whole->addLayout(fields);
    QWidget* const order[] = {m_list, m_add, m_remove, m_destinations, m_sources, m_freeText};
    for (std::size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void CFileCardPageDlg::fillLists()
{
    m_add->setEnabled(!m_variables->empty());
    m_sources->setModel(m_sourceChoices);
    m_destinations->setModel(m_destinationChoices);
    m_sources->setCurrentIndex(-1);
    m_destinations->setCurrentIndex(-1);
}

void CFileCardPageDlg::connectControls()
{
    const auto on
        = [this](void (CFileCardPageDlg::*work)()) { return [this, work] { inSlot([&] { (this->*work)(); }); }; };
    connect(m_add, &QPushButton::clicked, this, on(&CFileCardPageDlg::addVariable));
    connect(m_remove, &QPushButton::clicked, this, on(&CFileCardPageDlg::removeVariable));
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, on(&CFileCardPageDlg::showSelection));
    connect(m_destinations, &QComboBox::activated, this, on(&CFileCardPageDlg::takeDestination));
    connect(m_sources, &QComboBox::activated, this, on(&CFileCardPageDlg::takeSource));
    connect(m_freeText, &QLineEdit::textEdited, this, on(&CFileCardPageDlg::takeFreeText));
}

QTreeWidgetItem* CFileCardPageDlg::selectedRow() const { return m_list->selectedItems().value(0); }

QTreeWidgetItem* CFileCardPageDlg::addRow(const QString& source, CardSourceKind kind, const QString& destination)
{
    auto* row = new QTreeWidgetItem(m_list);
    setSource(*row, source, kind);
    setDestination(*row, destination);
    return row;
}

void CFileCardPageDlg::setSource(QTreeWidgetItem& row, const QString& text, CardSourceKind kind)
{
    const std::optional<CardChoice> fixed = fixedSource(kind);
    row.setText(sourceColumn, text);
    row.setData(sourceColumn, kindRole, static_cast<int>(kind));
    row.setIcon(sourceColumn, fixed ? fixed->icon : cardVariableIcon());
}

void CFileCardPageDlg::setDestination(QTreeWidgetItem& row, const QString& name)
{
    row.setText(destinationColumn, name);
    row.setIcon(destinationColumn, cardVariableIcon());
}

void CFileCardPageDlg::enableFreeText(bool enable) { mbEnableCtrl(FreeText, enable); }

std::optional<std::int32_t> CFileCardPageDlg::idOf(TextView name) const
{
    // Of variables of the same name the last one counts, as at run time.
    const auto found = std::find_if(
        m_variables->rbegin(), m_variables->rend(), [name](const CardVariable& each) { return each.name == name; });
    return found == m_variables->rend() ? std::nullopt : std::optional(found->id);
}

std::optional<CardChoice> CFileCardPageDlg::fixedSource(CardSourceKind kind) const
{
    const int row = kind == CardSourceKind::Variable ? -1 : m_sourceChoices->rowOf(kind);
    return row < 0 ? std::nullopt : std::optional(m_sourceChoices->at(row));
}

void CFileCardPageDlg::addVariable()
{
    QTreeWidgetItem* row = addRow({}, CardSourceKind::FreeText, m_destinationChoices->at(0).text);
    m_list->setCurrentItem(row);
    m_destinations->setFocus();
}

void CFileCardPageDlg::removeVariable()
{
    delete selectedRow();
    showSelection();
}

void CFileCardPageDlg::showSelection()
{
    const QTreeWidgetItem* row = selectedRow();
    mvEnableGroup(selectionGroup, row != nullptr);
    const bool isFreeText = row && kindOf(*row) == CardSourceKind::FreeText;
    enableFreeText(isFreeText);
    m_freeText->setText(isFreeText ? row->text(sourceColumn) : QString());
    if (!row) {
        m_sources->setCurrentIndex(-1);
        m_destinations->setCurrentIndex(-1);
        return;
    }
    m_destinations->setCurrentIndex(m_destinationChoices->rowOf(row->text(destinationColumn)));
    m_sources->setCurrentIndex(isFreeText ? m_sourceChoices->rowOf(CardSourceKind::FreeText)
                                          : m_sourceChoices->rowOf(row->text(sourceColumn)));
}

void CFileCardPageDlg::takeDestination()
{
    if (QTreeWidgetItem* row = selectedRow())
        setDestination(*row, m_destinations->currentText());
}

void CFileCardPageDlg::takeSource()
{
    QTreeWidgetItem* row = selectedRow();
    if (!row || m_sources->currentIndex() < 0)
        return;
    const CardChoice chosen = m_sourceChoices->at(m_sources->currentIndex());
    const bool isFreeText = chosen.kind == CardSourceKind::FreeText;
    setSource(*row, isFreeText ? QString() : chosen.text, chosen.kind);
    m_freeText->clear();
    enableFreeText(isFreeText);
}

void CFileCardPageDlg::takeFreeText()
{
    if (const QString text = withoutLineEnds(m_freeText->text()); text != m_freeText->text())
        m_freeText->setText(text);
    QTreeWidgetItem* row = selectedRow();
    if (row && kindOf(*row) == CardSourceKind::FreeText)
        row->setText(sourceColumn, m_freeText->text());
}

void CFileCardPageDlg::load(const ObjectRef& task)
{
    m_list->clear();
    for (const Text& line : split(readText(task, mappingVariable).value_or(Text()), u'\n')) {
        if (!line.empty())
            loadLine(line);
    }
    showSelection();
}

void CFileCardPageDlg::loadLine(TextView line)
{
    const TextView destination = takeField(line);
    const auto kind = static_cast<CardSourceKind>(leadingInteger(takeField(line)));
    const bool isVariable = kind == CardSourceKind::Variable;
    if (!idOf(destination) || (isVariable && !idOf(line)))
        return;
    const std::optional<CardChoice> fixed = fixedSource(kind);
    const bool ownText = isVariable || kind == CardSourceKind::FreeText;
    const QString source = ownText ? shown(line) : fixed ? fixed->text : QString();
    addRow(source, kind, shown(destination));
}

void CFileCardPageDlg::save(const ObjectRef& task)
{
    const auto properties = query<IArkTaskProperties>(task);
    if (!properties)
        throw StatusError(E_POINTER);
    Text lines;
    Status declared = S_OK;
    const auto declareNamed = [&](const Text& name) {
        const Status status = declare(*properties, idOf(name).value());
        if (!failed(declared))
            declared = status;
    };
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem& row = *m_list->topLevelItem(i);
        const CardSourceKind kind = kindOf(row);
        const Text destination = typed(row.text(destinationColumn));
        const bool isVariable = kind == CardSourceKind::Variable;
        const bool ownText = isVariable || kind == CardSourceKind::FreeText;
        const Text third = ownText ? typed(row.text(sourceColumn)) : Text();
        lines += formatText("%s;%d;%s\n", destination, static_cast<std::int32_t>(kind), third);
        declareNamed(destination);
        if (isVariable)
            declareNamed(third);
    }
    writeVariable(task, mappingVariable, Value(lines));
    // The mapping is stored whatever became of the declarations, but nobody is to believe that all went well.
    checkStatus(declared, "The card variables of the task could not be declared.");
}

} // namespace zn
