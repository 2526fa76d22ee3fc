// The print dialog's step of OK.

#include "addin/pages/print/PrintUIControls.h"
#include "addin/pages/print/PrintUIDlg.h"
#include "addin/pages/print/PrintUIMarginsDlg.h"
#include "addin/pages/print/VersionButton.h"
#include "addin/variables/TaskVariables.h"
#include "qtglue/Texts.h"

#include <QComboBox>
#include <QRadioButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QTabWidget>

namespace zn {

using namespace printUI;

namespace {

/// What the CAD application takes.
constexpr std::int32_t mostCopies = 999;

} // namespace

bool PrintUIDlg::confirm()
{
    return writeMargins() && writeVersionAndOrientation() && writePrinterAndSize() && writeCopies() && writeSelection();
}

bool PrintUIDlg::writeMargins()
{
    if (!m_margins)
        return true;
    try {
        m_margins->save(m_task);
        return true;
    } catch (const StatusError& error) {
        m_tabs->setCurrentWidget(m_marginsTab);
        return refuse(m_margins, hostSentence(error.status()));
    }
}

bool PrintUIDlg::writeVersionAndOrientation()
{
    QWidget* orientation = m_portrait->isChecked() ? m_portrait : m_landscape;
    if (m_settings.asksVersion) {
        const auto version = m_referencedVersion->isChecked() ? ReferenceVersion::Referenced : ReferenceVersion::Latest;
        if (!write(orientation, u"__printer_refversiontype", static_cast<std::int32_t>(version)))
            return false;
    }
    if (!m_settings.userOrientationChange)
        return true;
    return write(orientation, u"__printer_deforientation", std::int32_t{m_portrait->isChecked() ? 0 : 1});
}

bool PrintUIDlg::writePrinterAndSize()
{
    if (m_settings.printerSelection == PrinterSelection::Prompt) {
        const QString printer = m_printer->currentText();
        if (m_printer->currentIndex() < 0 || printer.isEmpty())
            return refuse(m_printer, message(NoPrinterText, u"No printer selected."));
        if (!write(m_printer, u"__printer_prname", typed(printer)))
            return false;
    }
    if (!m_settings.userSizeChange || m_size->currentIndex() < 0)
        return true;
    return write(m_size, u"__printer_defpapsize", std::int32_t{m_size->currentData().toInt()});
}

bool PrintUIDlg::writeCopies()
{
    const std::int32_t copies = m_copies->value();
    if (copies < 1)
        return refuse(m_copies, message(NoCopiesText, u"Enter number of copies to print."));
    if (copies > mostCopies)
        return refuse(m_copies,
            message(TooManyCopiesText, u"No more than %1 copies can be printed at once. Enter a smaller number.")
                .arg(mostCopies));
    return write(m_copies, u"__printer_copycount", copies);
}

bool PrintUIDlg::writeSelection()
{
    if (m_rows->files.selectedCount() == 0) {
        m_tabs->setCurrentIndex(0);
        return refuse(m_treeWindow, message(NothingSelectedText, u"Please select at least one file."));
    }
    m_selection = m_rows->files.selectionArray();
    return true;
}

bool PrintUIDlg::write(QWidget* focus, TextView variable, const Value& value)
{
    try {
        writeVariable(m_task, variable, value);
        return true;
    } catch (const StatusError& error) {
        return refuse(focus, hostSentence(error.status()));
    }
}

bool PrintUIDlg::refuse(QWidget* focus, const QString& sentence)
{
    messages().tell(messageParent(), sentence, windowTitle());
    if (focus)
        focus->setFocus();
    return false;
}

} // namespace zn
