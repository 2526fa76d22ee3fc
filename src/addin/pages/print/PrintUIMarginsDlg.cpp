#include "addin/pages/print/PrintUIMarginsDlg.h"

#include "addin/pages/print/LinesEdit.h"
#include "addin/variables/TaskVariables.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace zn {

namespace {

/// Numbers of the controls and of the texts, in the section "PrintUIMarginsDlg".
enum Control : int {
    MarginsGroup = 301,
    PrinterMargins = 302,
    CustomMargins = 303,
    FirstMarginLabel = 304, ///< to 307
    FirstMarginEdit = 308,  ///< to 311
    HeaderBand = 321,       ///< box, then three labels, then three edits, then the group
    FooterBand = 331,
    MillimetresText = 341,
};

constexpr int largestMargin = 9999; // mm

/// The edits in the order in which they are written.
constexpr struct {
    const char16_t* variable;
    const char* role;
    const char16_t* label;
} marginRows[] = {
    {u"__printer_margintop", "marginTop", u"&Top:"},
    {u"__printer_marginbottom", "marginBottom", u"&Bottom:"},
    {u"__printer_marginleft", "marginLeft", u"L&eft:"},
    {u"__printer_marginright", "marginRight", u"Ri&ght:"},
};

constexpr const char16_t* sectionLabels[] = {u"Left section:", u"Center section:", u"Right section:"};
constexpr const char* sectionNames[] = {"Left", "Center", "Right"};

} // namespace

/// A header's or footer's own texts.
struct PrintUIMarginsDlg::BandTexts {
    const char16_t* check;
    const char16_t* spoken[3]; ///< for screen readers
};

namespace {

constexpr PrintUIMarginsDlg::BandTexts headerTexts
    = {u"&Use custom header:", {u"Header, left section", u"Header, center section", u"Header, right section"}};
constexpr PrintUIMarginsDlg::BandTexts footerTexts
    = {u"Use custom &footer:", {u"Footer, left section", u"Footer, center section", u"Footer, right section"}};

} // namespace

PrintUIMarginsDlg::PrintUIMarginsDlg(PageEnvironment& environment, QWidget* parent, const PrintSettings& settings)
    : QWidget(parent)
    , LexWnd(environment, *this, u"PrintUIMarginsDlg")
    , m_showsMargins(settings.marginType == margins::prompt)
{
    m_header.isShown = settings.headerType == margins::prompt;
    m_footer.isShown = settings.footerType == margins::prompt;
    QWidget* marginsGroup = makeMargins();
    QWidget* headerGroup = makeBand(m_header, HeaderBand, "header", headerTexts);
    QWidget* footerGroup = makeBand(m_footer, FooterBand, "footer", footerTexts);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(marginsGroup);
    whole->addWidget(headerGroup);
    whole->addWidget(footerGroup);
    whole->addStretch();
    mbInitLexWnd();
    marginsGroup->setVisible(m_showsMargins);
    headerGroup->setVisible(m_header.isShown);
    footerGroup->setVisible(m_footer.isShown);
    enableEdits();
}

QWidget* PrintUIMarginsDlg::makeMargins()
{
    auto* group = control<QGroupBox>(MarginsGroup, "marginsGroup", u"Margins");
    auto* grid = new QGridLayout(group);
    auto* printerMargins = control<QRadioButton>(PrinterMargins, "printerMargins", u"Use printer's &margins");
    m_customMargins = control<QRadioButton>(CustomMargins, "customMargins", u"Use &custom margins:");
    printerMargins->setChecked(true);
    grid->addWidget(printerMargins, 0, 0, 1, 5);
    grid->addWidget(m_customMargins, 1, 0, 1, 5);
    for (int i = 0; i < static_cast<int>(m_margins.size()); ++i) {
        const auto& row = marginRows[i];
        auto* label = control<QLabel>(FirstMarginLabel + i, (QByteArray(row.role) + "Label").constData(), row.label);
        auto* edit = control<QSpinBox>(FirstMarginEdit + i, row.role);
        edit->setRange(0, largestMargin);
        edit->setSuffix(" " + environment().text(MillimetresText, u"mm", u"PrintUIMarginsDlg"));
        label->setBuddy(edit);
        grid->addWidget(label, 2 + i / 2, 2 * (i % 2));
        grid->addWidget(edit, 2 + i / 2, 2 * (i % 2) + 1);
        m_margins[static_cast<std::size_t>(i)] = edit;
    }
    grid->setColumnStretch(4, 1);
    connect(m_customMargins, &QRadioButton::toggled, this, [this] { enableEdits(); });
    return group;
}

QWidget* PrintUIMarginsDlg::makeBand(Band& band, int firstNumber, const char* role, const BandTexts& texts)
{
    auto* group = new QGroupBox(this);
    auto* grid = new QGridLayout(group);
    const QByteArray name(role);
    band.isCustom = control<QCheckBox>(firstNumber, (name + "Custom").constData(), texts.check);
    grid->addWidget(band.isCustom, 0, 0, 1, 3);
    for (int i = 0; i < 3; ++i) {
        const QByteArray section = name + sectionNames[i];
        auto* label = control<QLabel>(firstNumber + 1 + i, (section + "Label").constData(), sectionLabels[i]);
        auto* edit = control<LinesEdit>(firstNumber + 4 + i, section.constData(), texts.spoken[i]);
        edit->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        label->setBuddy(edit);
        grid->addWidget(label, 1, i);
        grid->addWidget(edit, 2, i);
        band.sections[static_cast<std::size_t>(i)] = edit;
    }
    connect(band.isCustom, &QCheckBox::toggled, this, [this] { enableEdits(); });
    return group;
}

void PrintUIMarginsDlg::load(const ObjectRef& task)
{
    for (std::size_t i = 0; i < m_margins.size(); ++i) {
        if (const auto stored = readInteger(task, marginRows[i].variable))
            m_margins[i]->setValue(*stored);
    }
    for (Band* band : {&m_header, &m_footer}) {
        for (std::size_t i = 0; i < band->sections.size(); ++i) {
            if (const auto stored = readText(task, band->variables[i]))
                band->sections[i]->setLines(*stored);
        }
    }
}

void PrintUIMarginsDlg::save(const ObjectRef& task)
{
    if (m_showsMargins && !m_customMargins->isChecked())
        writeVariable(task, u"__printer_margintype", margins::none);
    // With custom margins the type stays at "prompt", which the macro reads as custom by now.
    if (m_showsMargins && m_customMargins->isChecked()) {
        for (std::size_t i = 0; i < m_margins.size(); ++i)
            writeVariable(task, marginRows[i].variable, std::int32_t{m_margins[i]->value()});
    }
    saveBand(m_header, task);
    saveBand(m_footer, task);
}

void PrintUIMarginsDlg::saveBand(const Band& band, const ObjectRef& task) const
{
    if (!band.isShown)
        return;
    writeVariable(task, band.typeVariable, band.isCustom->isChecked() ? margins::fixed : margins::none);
    if (!band.isCustom->isChecked())
        return;
    for (std::size_t i = 0; i < band.sections.size(); ++i)
        writeVariable(task, band.variables[i], band.sections[i]->lines());
}

void PrintUIMarginsDlg::enableEdits()
{
    for (QSpinBox* edit : m_margins)
        edit->setEnabled(m_customMargins->isChecked());
    for (const Band* band : {&m_header, &m_footer}) {
        for (LinesEdit* edit : band->sections)
            edit->setEnabled(band->isCustom->isChecked());
    }
}

} // namespace zn
