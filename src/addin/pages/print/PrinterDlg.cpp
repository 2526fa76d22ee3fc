#include "addin/pages/print/PrinterDlg.h"

#include "addin/pages/print/LinesEdit.h"
#include "addin/pages/print/PaperSizeList.h"
#include "addin/variables/TaskVariables.h"
#include "platform/Platform.h"
#include "platform/Printers.h"
#include "qtglue/Texts.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zn {

namespace {

enum Control : int { Always = 301, Name, PromptUser, Names, BySize, SizeList, SizeColumn, PrinterColumn };

enum Type : int { FixedPrinter = 0, PromptedPrinter = 1, PrinterBySize = 2 };

constexpr const char16_t* typeVariable = u"__printer_prseltype";
constexpr const char16_t* nameVariable = u"__printer_prname";
constexpr const char16_t* namesVariable = u"__printer_prnamelist";

} // namespace

CPrinterDlg::CPrinterDlg(PageEnvironment& environment, QWidget* parent)
    : Page(environment, parent, u"PrinterDlg")
    , m_type(new QButtonGroup(this))
{
    m_type->addButton(
        control<QRadioButton>(Always, "alwaysPrinter", u"&Always use the following printer name:"), FixedPrinter);
    m_name = control<QComboBox>(Name, "printerName", u"Printer name");
    m_type->addButton(
        control<QRadioButton>(PromptUser, "promptPrinter", u"&Prompt the user with the following options:"),
        PromptedPrinter);
    m_names = control<LinesEdit>(Names, "printerNames", u"Printer names, one to a line");
    m_type->addButton(
        control<QRadioButton>(BySize, "printerBySize", u"&Select printer based on paper size:"), PrinterBySize);
    m_sizes = control<PaperSizeList>(SizeList, "printersBySize", u"Printers by paper size");
    m_type->button(FixedPrinter)->setChecked(true);

    placeControls();
    mbInitLexWnd();
    const auto column
        = [this](int number, const char16_t* text) { return this->environment().text(number, text, u"PrinterDlg"); };
    m_sizes->setHeaders(column(SizeColumn, u"Paper Size"), column(PrinterColumn, u"Printer Name"));
    fillPrinters();
    connect(m_type, &QButtonGroup::idToggled, this, [this] { inSlot([this] { enableFields(); }); });
    enableFields();
}

void CPrinterDlg::placeControls()
{
    m_name->setEditable(true);
    m_name->setInsertPolicy(QComboBox::NoInsert);
    m_name->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_names->setLineWrapMode(QPlainTextEdit::NoWrap);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_type->button(FixedPrinter));
    rows->addWidget(m_name);
    rows->addWidget(m_type->button(PromptedPrinter));
    rows->addWidget(m_names);
    rows->addWidget(m_type->button(PrinterBySize));
    rows->addWidget(m_sizes, 1);
}

void CPrinterDlg::fillPrinters()
{
    QStringList names;
    for (const Printer& printer : environment().platform().printers.list())
        names << shown(printer.name);
    m_name->addItems(names);
    m_name->setCurrentIndex(-1);
    m_name->clearEditText();
    if (names.isEmpty())
        m_name->lineEdit()->setPlaceholderText(ts(642, u"This machine has no printers; enter one of the worker's."));
    m_sizes->setOffers(names);
}

void CPrinterDlg::enableFields()
{
    const int type = m_type->checkedId();
    m_sizes->finishEdit();
    m_name->setEnabled(type == FixedPrinter);
    m_names->setEnabled(type == PromptedPrinter);
    m_sizes->setEnabled(type == PrinterBySize);
}

void CPrinterDlg::load(const ObjectRef& task)
{
    if (QAbstractButton* button = m_type->button(readInteger(task, typeVariable).value_or(FixedPrinter)))
        button->setChecked(true);
    m_name->setEditText(shown(readText(task, nameVariable).value_or(Text())));
    m_names->setLines(readText(task, namesVariable).value_or(Text()));
    for (int row = 0; row < m_sizes->topLevelItemCount(); ++row)
        m_sizes->setPrinter(row, readText(task, m_sizes->sizeOf(row).printerVariable).value_or(Text()));
}

void CPrinterDlg::save(const ObjectRef& task)
{
    m_sizes->finishEdit();
    writeVariable(task, typeVariable, m_type->checkedId());
    writeVariable(task, nameVariable, typed(m_name->currentText()));
    writeVariable(task, namesVariable, m_names->lines());
    for (int row = 0; row < m_sizes->topLevelItemCount(); ++row)
        writeVariable(task, m_sizes->sizeOf(row).printerVariable, m_sizes->printer(row));
}

} // namespace zn
