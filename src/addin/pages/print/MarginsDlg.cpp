#include "addin/pages/print/MarginsDlg.h"

#include "addin/pages/print/LinesEdit.h"
#include "addin/pages/print/MillimeterEdit.h"
#include "addin/variables/TaskVariables.h"
#include "base/Format.h"
#include "qtglue/Texts.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

namespace zn {

namespace {

/// Numbers of a group's controls: the box, behind it its three radio buttons, and from `fields` on its fields.
enum Control : int { MarginsBox = 301, HeaderBox = 321, FooterBox = 341, fields = 4 };

enum Type : int { Nothing = 0, Prompt = 1, Fixed = 2 };

struct Field {
    const char* role;
    const char16_t* label;
    const char16_t* variable;
};

constexpr Field margins[] = {
    {"marginTop", u"&Top:", u"__printer_margintop"},
    {"marginBottom", u"&Bottom:", u"__printer_marginbottom"},
    {"marginLeft", u"&Left:", u"__printer_marginleft"},
    {"marginRight", u"&Right:", u"__printer_marginright"},
};

/// Places in `margins`, as earlier versions read them.
constexpr std::size_t readingOrder[] = {0, 1, 3, 2};

constexpr const char16_t* sectionLabels[] = {u"Left section:", u"Center section:", u"Right section:"};
constexpr const char* sectionRoles[] = {"Left", "Center", "Right"};
constexpr const char16_t* headerVariables[]
    = {u"__printer_headerleft", u"__printer_headercenter", u"__printer_headerright"};
constexpr const char16_t* footerVariables[]
    = {u"__printer_footerleft", u"__printer_footercenter", u"__printer_footerright"};

constexpr const char16_t* marginType = u"__printer_margintype";
constexpr const char16_t* headerType = u"__printer_headertype";
constexpr const char16_t* footerType = u"__printer_footertype";

} // namespace

CMarginsDlg::CMarginsDlg(PageEnvironment& environment, QWidget* parent)
    : Page(environment, parent, u"MarginsDlg")
{
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(makeMargins());
    rows->addWidget(makeTexts(m_header, HeaderBox, u"Header", u"Always use the following &header:", "header"), 1);
    rows->addWidget(makeTexts(m_footer, FooterBox, u"Footer", u"Always use the following &footer:", "footer"), 1);
    mbInitLexWnd();
    enableFields();
}

void CMarginsDlg::addTypes(
    Choice& choice, QGroupBox& box, const char* role, const char16_t* none, const char16_t* fixed)
{
    choice.type = new QButtonGroup(this);
    const struct {
        const char* suffix;
        const char16_t* text;
    } types[] = {{"Default", none}, {"Prompt", u"Prompt the user"}, {"Fixed", fixed}};
    for (int type = Nothing; type <= Fixed; ++type) {
        const QByteArray name = QByteArray(role) + types[type].suffix;
        auto* button = control<QRadioButton>(choice.box + 1 + type, name.constData(), types[type].text);
        choice.type->addButton(button, type);
        box.layout()->addWidget(button);
    }
    choice.type->button(Prompt)->setChecked(true);
    connect(choice.type, &QButtonGroup::idToggled, this, [this] { enableFields(); });
}

QGroupBox* CMarginsDlg::makeMargins()
{
    m_margins.box = MarginsBox;
    auto* box = control<QGroupBox>(MarginsBox, "margins", u"Margins");
    auto* rows = new QVBoxLayout(box);
    addTypes(m_margins, *box, "margins", u"&Use printer's margins", u"&Always use the following size:");

    auto* grid = new QGridLayout;
    for (std::size_t i = 0; i < marginCount; ++i) {
        const int place = static_cast<int>(i);
        const int number = MarginsBox + fields + 3 * place;
        const QByteArray role(margins[i].role);
        auto* label = control<QLabel>(number, (role + "Label").constData(), margins[i].label);
        m_edits[i] = control<MillimeterEdit>(number + 1, role.constData());
        auto* unit = control<QLabel>(number + 2, (role + "Unit").constData(), u"mm");
        label->setBuddy(m_edits[i]);
        const int column = place / 2 * 4; // two pairs side by side, a gap between them
        grid->addWidget(label, place % 2, column);
        grid->addWidget(m_edits[i], place % 2, column + 1);
        grid->addWidget(unit, place % 2, column + 2);
        for (QWidget* widget :
            {static_cast<QWidget*>(label), static_cast<QWidget*>(m_edits[i]), static_cast<QWidget*>(unit)})
            mvAddControl(MarginsBox, widget);
    }
    grid->setColumnMinimumWidth(3, fontMetrics().averageCharWidth() * 4);
    grid->setColumnStretch(7, 1);
    rows->addLayout(grid);
    return box;
}

QGroupBox* CMarginsDlg::makeTexts(
    Choice& choice, int number, const char16_t* title, const char16_t* fixed, const char* role)
{
    choice.box = number;
    auto* box = control<QGroupBox>(number, role, title);
    auto* rows = new QVBoxLayout(box);
    addTypes(choice, *box, role, u"None", fixed);

    auto* grid = new QGridLayout;
    for (std::size_t i = 0; i < sectionCount; ++i) {
        const int column = static_cast<int>(i);
        const int first = number + fields + 2 * column;
        const QByteArray name = QByteArray(role) + sectionRoles[i];
        auto* label = control<QLabel>(first, (name + "Label").constData(), sectionLabels[i]);
        choice.sections[i] = control<LinesEdit>(first + 1, name.constData());
        label->setBuddy(choice.sections[i]);
        grid->addWidget(label, 0, column);
        grid->addWidget(choice.sections[i], 1, column);
        grid->setColumnStretch(column, 1);
        mvAddControl(number, label);
        mvAddControl(number, choice.sections[i]);
    }
    grid->setRowStretch(1, 1);
    rows->addLayout(grid, 1);
    return box;
}

void CMarginsDlg::enableFields()
{
    inSlot([this] {
        for (const Choice* choice : {&m_margins, &m_header, &m_footer})
            mvEnableGroup(choice->box, choice->type->checkedId() == Fixed);
        // A greyed field can't be corrected, and it is stored all the same.
        if (m_margins.type->checkedId() != Fixed) {
            for (MillimeterEdit* edit : m_edits)
                edit->dropText();
        }
    });
}

void CMarginsDlg::load(const ObjectRef& task)
{
    const auto loadType = [&](const Choice& choice, const char16_t* variable) {
        if (QAbstractButton* button = choice.type->button(readInteger(task, variable).value_or(Prompt)))
            button->setChecked(true);
    };
    const auto loadSections = [&](const Choice& choice, const auto& variables) {
        for (std::size_t i = 0; i < sectionCount; ++i) {
            if (const auto text = readText(task, variables[i]))
                choice.sections[i]->setLines(*text);
        }
    };
    loadType(m_margins, marginType);
    loadType(m_header, headerType);
    loadType(m_footer, footerType);
    for (const std::size_t i : readingOrder) {
        if (const auto number = readFloat(task, margins[i].variable))
            m_edits[i]->setNumber(*number);
    }
    loadSections(m_header, headerVariables);
    loadSections(m_footer, footerVariables);
}

bool CMarginsDlg::validate()
{
    for (MillimeterEdit* edit : m_edits) {
        if (edit->number())
            continue;
        tell(
            shown(formatText(ts(640, u"\"%s\" is no length for the margin \"%s\". Please enter a number, such as 12.5.")
                                 .toUtf8()
                                 .constData(),
                typed(edit->text()), typed(edit->accessibleName()))));
        edit->setFocus();
        edit->selectAll();
        return false;
    }
    return true;
}

void CMarginsDlg::save(const ObjectRef& task)
{
    const auto saveSections = [&](const Choice& choice, const auto& variables) {
        for (std::size_t i = 0; i < sectionCount; ++i)
            writeVariable(task, variables[i], choice.sections[i]->lines());
    };
    writeVariable(task, marginType, m_margins.type->checkedId());
    writeVariable(task, headerType, m_header.type->checkedId());
    writeVariable(task, footerType, m_footer.type->checkedId());
    for (std::size_t i = 0; i < marginCount; ++i)
        writeVariable(task, margins[i].variable, m_edits[i]->number().value());
    saveSections(m_header, headerVariables);
    saveSections(m_footer, footerVariables);
}

} // namespace zn
