#include "addin/pages/print/PrintUIDlg.h"

#include "addin/installation/ErrorTexts.h"
#include "addin/pages/frame/Page.h"
#include "addin/pages/print/PrintUIControls.h"
#include "addin/pages/print/PrintUIMarginsDlg.h"
#include "addin/pages/print/StrComp.h"
#include "addin/pages/print/VersionButton.h"
#include "addin/variables/TaskVariables.h"
#include "contracts/classes/ClassStore.h"
#include "contracts/host/ArkBatch.h"
#include "qtglue/TabOrder.h"
#include "qtglue/Texts.h"

#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace zn {

using namespace printUI;

PrintUIDlg::PrintUIDlg(PageEnvironment& environment, QWidget* parent, std::shared_ptr<IArkVault> vault, ObjectRef task,
    ArkSelection& selection)
    : Dialog(environment, parent, section)
    , m_vault(std::move(vault))
    , m_task(std::move(task))
    , m_selection(selection)
{
    makeControls();
}

PrintUIDlg::~PrintUIDlg() = default;

bool PrintUIDlg::start()
{
    if (!query<IArkTaskInstance>(m_task))
        return refuse(nullptr, message(NoInstanceText, u"Failed to get IArkTaskInstance ptr from ArkCmd"));
    m_settings = PrintSettings::read(m_task);
    mvShowGroup(VersionGroup, m_settings.asksVersion);
    if (m_settings.hasMarginsTab())
        makeMarginsTab();
    (m_settings.startsWithLatest ? m_latestVersion : m_referencedVersion)->setChecked(true);
    if (!makeTree())
        return false;
    readFiles();
    fillPrinters();
    fillSizes();
    (m_settings.orientation == 0 ? m_portrait : m_landscape)->setChecked(true);
    mbShowCtrl(OrientationFrame, m_settings.userOrientationChange);
    showTotal();
    fitToScreen();
    tabFirstTo(*this, [this](const QWidget& control) { return m_tabs->isAncestorOf(&control); });
    m_treeWindow->setFocus();
    return true;
}

/// With large letters the tab is taller than a small screen, so it scrolls.
void PrintUIDlg::makeMarginsTab()
{
    m_marginsTab = new QScrollArea(m_tabs);
    m_marginsTab->setFrameShape(QFrame::NoFrame);
    m_marginsTab->setWidgetResizable(true);
    m_marginsTab->setFocusPolicy(Qt::NoFocus);
    m_margins = new PrintUIMarginsDlg(environment(), m_marginsTab, m_settings);
    m_margins->load(m_task);
    m_marginsTab->setWidget(m_margins);
    m_tabs->addTab(m_marginsTab, message(MarginsTabText, u"Margins"));
}

bool PrintUIDlg::makeTree()
{
    QString why;
    try {
        m_tree = query<IXRefTreeListCtrl>(
            createInstance(environment().platform().registry, environment().platform().files, xRefTreeProgramId));
        std::int32_t window = 0;
        const Text name = typed(message(TreeName, u"Files and their references"));
        const Status status = m_tree ? m_tree->Create(handleOf(*this), name, *this, window) : E_NOINTERFACE;
        m_treeWindow = failed(status) ? nullptr : windowOf(window);
        why = m_treeWindow ? QString() : hostSentence(failed(status) ? status : E_UNEXPECTED);
    } catch (const StatusError& error) {
        why = shown(error.what());
    }
    if (!m_treeWindow)
        return refuse(nullptr, message(NoTreeText, u"Could not create the IXRefTreeListCtrl control.\n") + why);
    m_filesLayout->addWidget(m_treeWindow, 1);
    return true;
}

/// The host's files in the version that the buttons say, ticked by the task's rule. None if it can't tell them; the
/// user has been told then.
std::shared_ptr<FileRefRows> PrintUIDlg::readRows()
{
    ObjectRef utility;
    Status status = m_vault ? m_vault->CreateUtility(ArkUtil_BatchList, utility) : E_POINTER;
    const auto list = query<IArkBatchList>(utility);
    std::vector<ArkListRow> rows;
    if (!failed(status))
        status = list ? list->AddSelection(*m_vault, m_selection) : E_NOINTERFACE;
    if (!failed(status))
        status = list->GetRows(listColumns, m_referencedVersion->isChecked() ? 1 : 0, rows);
    if (failed(status)) {
        messages().tell(messageParent(),
            message(NoFilesText, u"Failed to read information about selected files.\n") + hostSentence(status),
            windowTitle());
        return nullptr;
    }
    auto read = std::make_shared<FileRefRows>();
    read->files = PrintFileList(
        m_selection, rows, {m_settings.autoSelect, typed(message(UnsupportedText, u"Unsupported File Format"))});
    return read;
}

void PrintUIDlg::readFiles()
{
    if (auto read = readRows())
        m_rows = std::move(read);
    m_rows->expandToTicked();
    showFiles();
}

/// The user has pressed the other version: the rows keep their ticks and stay open where they were.
void PrintUIDlg::changeVersion()
{
    auto next = readRows();
    if (!next) {
        // The files that are shown are still those of the version before.
        const QSignalBlocker quietOnes[] = {QSignalBlocker(m_referencedVersion), QSignalBlocker(m_latestVersion)};
        (m_referencedVersion->isChecked() ? m_latestVersion : m_referencedVersion)->setChecked(true);
        return;
    }
    next->files.takeTicks(m_rows->files);
    next->expanded = m_rows->expanded;
    m_rows = std::move(next);
    showFiles();
    showTotal();
}

void PrintUIDlg::showFiles() { checkStatus(m_tree->SetRows(FileRefItemImp::roots(m_rows))); }

void PrintUIDlg::fillPrinters()
{
    if (m_settings.printerSelection == PrinterSelection::ByPaperSize) {
        m_printer->setEnabled(false);
        m_printerLabel->setEnabled(false);
        return;
    }
    const auto names
        = offeredPrinters(environment().platform().printers, m_settings.printerNames, m_settings.printerName);
    for (const Text& name : names)
        m_printer->addItem(shown(name));
    const int preferred = m_printer->findText(shown(m_settings.printerName), Qt::MatchFixedString);
    m_printer->setCurrentIndex(preferred < 0 && !names.empty() ? 0 : preferred);
    m_printer->setEnabled(m_settings.printerSelection != PrinterSelection::Fixed);
}

void PrintUIDlg::fillSizes()
{
    {
        const QSignalBlocker quiet(m_size);
        for (const PaperSize& size : paperSizes) {
            if (isShown(size))
                m_size->addItem(shown(size.name), size.code);
        }
        // A hidden size has no entry: nothing is chosen then, and the task's size stays as it is.
        m_size->setCurrentIndex(m_size->findData(m_settings.paperSize));
    }
    m_size->setEnabled(m_settings.userSizeChange);
    showPrinterOfSize();
}

/// Where the printer follows the size, shows the one of the chosen size.
void PrintUIDlg::showPrinterOfSize()
{
    if (m_settings.printerSelection != PrinterSelection::ByPaperSize)
        return;
    m_printer->clear();
    const PaperSize* size = m_size->currentIndex() < 0 ? nullptr : findPaperSize(m_size->currentData().toInt());
    if (!size)
        return;
    m_printer->addItem(shown(readText(m_task, size->printerVariable).value_or(Text())));
    m_printer->setCurrentIndex(0);
}

void PrintUIDlg::showTotal()
{
    const std::int64_t total = m_rows->files.selectedCount() * m_copies->value();
    m_total->setText(message(TotalText, u"Total: %1").arg(shown(StrComp(total).text())));
}

Status PrintUIDlg::OnCheck(IFileRefItem& row, bool checked)
{
    auto* item = dynamic_cast<FileRefItemImp*>(&row);
    if (!item || !m_rows->files.select(item->file(), checked))
        return E_INVALIDARG;
    showTotal();
    return S_OK;
}

Status PrintUIDlg::OnExpand(IFileRefItem& row, bool expanded)
{
    if (auto* item = dynamic_cast<FileRefItemImp*>(&row))
        item->noteExpanded(expanded);
    return S_OK;
}

void PrintUIDlg::accept()
{
    inSlot([this] {
        if (confirm())
            QDialog::accept();
    });
}

QString PrintUIDlg::message(int number, const char16_t* defaultText) const
{
    return environment().text(number, defaultText, section);
}

/// A dialog that isn't shown, because the task wants none, can't be a message's parent.
QWidget* PrintUIDlg::messageParent() { return isVisible() ? this : parentWidget(); }

QString PrintUIDlg::hostSentence(Status status)
{
    Text name, description;
    if (m_vault && m_vault->GetErrorText(status, name, description) == S_OK && !description.empty())
        return shown(description);
    return shown(errorText(status));
}

bool showPrintDialog(PageEnvironment& environment, const std::shared_ptr<IArkVault>& vault, ArkCmd* cmd,
    ArkSelection& selection, bool show)
{
    if (!cmd) {
        environment.messages().tell(nullptr, environment.text(NoCommandText, u"ArkCmd struct is NULL", section),
            environment.text(NoCommandTitle, u"ZENTREL Print Add-In", section));
        return false;
    }
    QWidget* parent = windowOf(cmd->parentWindow);
    try {
        PrintUIDlg dialog(environment, parent, vault, cmd->taskObject, selection);
        if (!dialog.start())
            return false;
        return show ? dialog.exec() == QDialog::Accepted : dialog.confirm();
    } catch (...) {
        environment.messages().tellCurrentFailure(parent);
        return false;
    }
}

} // namespace zn
