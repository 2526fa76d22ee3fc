// The controls of the print dialog and where they stand.

#include "addin/pages/print/PrintUIControls.h"
#include "addin/pages/print/PrintUIDlg.h"
#include "addin/pages/print/PrintUIMarginsDlg.h"
#include "addin/pages/print/VersionButton.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace zn {

using namespace printUI;

namespace {

/// More than can be printed, so that what is too much is refused with a word and not cut short while it is typed.
constexpr int mostTypedCopies = 999'999;

/// First size of the window in average characters and lines.
constexpr int charactersWide = 130;
constexpr int linesHigh = 34;
/// What a window's frame, and a panel beside it, may take of the screen, in pixels.
constexpr int screenReserve = 64;

} // namespace

void PrintUIDlg::makeControls()
{
    m_tabs = control<QTabWidget>(Tabs, "tabs");
    m_tabs->addTab(makeFilesTab(), message(FilesTabText, u"Files"));
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(m_tabs, 1);
    whole->addLayout(makeFields());
    whole->addLayout(makeButtons());
    setSizeGripEnabled(true);
    mbInitLexWnd(u"Print");
    mbAddToolTip(ReferencedVersion, message(ReferencedTip, u"Referenced version"));
    mbAddToolTip(LatestVersion, message(LatestTip, u"Latest version"));
}

void PrintUIDlg::fitToScreen()
{
    const QSize room = screen()->availableGeometry().size() - QSize(screenReserve, screenReserve);
    QSize wanted(charactersWide * fontMetrics().averageCharWidth(), linesHigh * fontMetrics().lineSpacing());
    if (m_margins) {
        // A scroll area asks for less than what is in it.
        const QSize missing = m_margins->sizeHint() - m_marginsTab->sizeHint();
        wanted = wanted.expandedTo(sizeHint() + missing.expandedTo({0, 0}));
    }
    resize(wanted.boundedTo(room));
}

QWidget* PrintUIDlg::makeFilesTab()
{
    auto* tab = new QWidget(m_tabs);
    auto* label = control<QLabel>(VersionLabel, "versionLabel", u"&Version of references:");
    m_referencedVersion = control<VersionButton>(ReferencedVersion, "referencedVersion", u"Referenced version");
    m_latestVersion = control<VersionButton>(LatestVersion, "latestVersion", u"Latest version");
    auto* either = new QButtonGroup(this);
    for (VersionButton* button : {m_referencedVersion, m_latestVersion})
        either->addButton(button);
    label->setBuddy(m_referencedVersion);
    for (const int number : {VersionLabel, ReferencedVersion, LatestVersion})
        mvAddControl(VersionGroup, number);
    auto* versions = new QHBoxLayout;
    versions->addWidget(label);
    versions->addWidget(m_referencedVersion);
    versions->addWidget(m_latestVersion);
    versions->addStretch();
    auto* layout = new QVBoxLayout(tab);
    layout->addLayout(versions);
    m_filesLayout = layout;
    connect(either, &QButtonGroup::buttonToggled, this, [this](QAbstractButton*, bool isDown) {
        if (isDown && m_tree)
            messages().inSlot(messageParent(), [this] { changeVersion(); });
    });
    return tab;
}

QLayout* PrintUIDlg::makeFields()
{
    m_printerLabel = control<QLabel>(PrinterLabel, "printerLabel", u"&Printer:");
    m_printer = control<QComboBox>(PrinterBox, "printer");
    auto* sizeLabel = control<QLabel>(SizeLabel, "paperSizeLabel", u"Paper &size:");
    m_size = control<QComboBox>(SizeBox, "paperSize");
    auto* copiesLabel = control<QLabel>(CopiesLabel, "copiesLabel", u"&Number of copies:");
    m_copies = control<QSpinBox>(CopiesEdit, "copies");
    m_copies->setRange(0, mostTypedCopies);
    m_copies->setValue(1);
    m_total = control<QLabel>(Total, "total");
    m_printerLabel->setBuddy(m_printer);
    sizeLabel->setBuddy(m_size);
    copiesLabel->setBuddy(m_copies);

    auto* fields = new QGridLayout;
    fields->addWidget(m_printerLabel, 0, 0);
    fields->addWidget(m_printer, 0, 1);
    fields->addWidget(sizeLabel, 1, 0);
    fields->addWidget(m_size, 1, 1);
    fields->addWidget(makeOrientation(), 0, 2, 2, 1);
    fields->addWidget(copiesLabel, 0, 3);
    fields->addWidget(m_copies, 0, 4);
    fields->addWidget(m_total, 1, 3, 1, 2);
    fields->setColumnStretch(1, 1);
    connect(m_size, &QComboBox::currentIndexChanged, this,
        [this] { messages().inSlot(messageParent(), [this] { showPrinterOfSize(); }); });
    connect(m_copies, &QSpinBox::valueChanged, this, [this] { inSlot([this] { showTotal(); }); });
    return fields;
}

QWidget* PrintUIDlg::makeOrientation()
{
    auto* frame = control<QGroupBox>(OrientationFrame, "orientation", u"Orientation");
    m_portrait = control<QRadioButton>(Portrait, "portrait", u"P&ortrait");
    m_landscape = control<QRadioButton>(Landscape, "landscape", u"&Landscape");
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(m_portrait);
    layout->addWidget(m_landscape);
    m_orientation = frame;
    return frame;
}

QLayout* PrintUIDlg::makeButtons()
{
    auto* print = control<QPushButton>(PrintButton, "print", u"Print");
    auto* cancel = control<QPushButton>(CancelButton, "cancel", u"Cancel");
    auto* help = control<QPushButton>(HelpButton, "help", u"&Help");
    print->setDefault(true);
    connect(print, &QPushButton::clicked, this, [this] { accept(); });
    connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
    connect(help, &QPushButton::clicked, this, [this] { inSlot([this] { mzbShowHelp(section); }); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(print);
    buttons->addWidget(cancel);
    buttons->addWidget(help);
    return buttons;
}

} // namespace zn
