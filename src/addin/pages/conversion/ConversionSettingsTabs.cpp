#include "addin/pages/conversion/AsmTemplateDlg.h"
#include "addin/pages/conversion/ConfsTemplateDlg.h"
#include "addin/pages/conversion/ConversionSettingsPageDlg.h"
#include "addin/pages/conversion/OutputPathRow.h"
#include "addin/pages/conversion/PartTemplateDlg.h"
#include "addin/pages/conversion/SheetsTemplateDlg.h"
#include "addin/pages/options/AdvancedConvOpDlg.h"
#include "addin/variables/OutputFormats.h"
#include "contracts/host/PageMessage.h"

#include <QComboBox>
#include <QLabel>
#include <QTabWidget>

/// What the page shows for a format, its tabs, and how it answers its holder.
namespace zn {

void CConversionSettingsPageDlg::refreshForFormat()
{
    const std::int32_t format = formatCode();
    const bool is3dPdf = format == pdf3dFormatCode;
    mvShowGroup(OutputGroup, !is3dPdf);
    mvShowGroup(ThemeGroup, is3dPdf);
    if (m_launch && is3dPdf)
        mvShowGroup(ThemeGroup, m_themeTabs->count() > 0 && (m_freedom.themes.assembly || m_freedom.themes.part));
    else if (m_launch)
        showOutputTabs(outputTabsForFormat(m_freedom.output, format));

    m_sheets->setFormat(format);
    m_confs->setFormat(format);
    mbEnableCtrl(Options, outputFormats()[static_cast<std::size_t>(format)].hasOptions);
    if (!m_launch)
        return;
    m_path->setFormat(formatLabel(), format);
    showEmptyNote();
    sendPageMessage(m_launchParent, pageFormatChangedMessage);
}

void CConversionSettingsPageDlg::putTabs(QTabWidget& tabs, const TabPair& pair, TabsShown shown)
{
    tabs.clear();
    if (shown.first)
        tabs.addTab(pair[0].page, pair[0].icon, pair[0].label);
    if (shown.second)
        tabs.addTab(pair[1].page, pair[1].icon, pair[1].label);
}

/// Of two tabs, the one that was in front stays there.
void CConversionSettingsPageDlg::showOutputTabs(TabsShown tabs)
{
    if (m_outputTabs->count() > 1)
        m_sheetsInFront = m_outputTabs->currentWidget() == m_sheets;
    putTabs(*m_outputTabs, m_outputPair, tabs);
    if (tabs.first != tabs.second)
        m_sheetsInFront = tabs.second;
    if (tabs.first && m_sheetsInFront)
        m_outputTabs->setCurrentWidget(m_sheets);
    mvShowGroup(OutputGroup, tabs.first || tabs.second);
}

void CConversionSettingsPageDlg::showThemeTabs(TabsShown tabs)
{
    const QSignalBlocker quiet(m_themeTabs);
    putTabs(*m_themeTabs, m_themePair, tabs);
    m_themePage = static_cast<ThemeTemplateDlg*>(m_themeTabs->currentWidget());
    mvShowGroup(ThemeGroup, tabs.first || tabs.second);
}

void CConversionSettingsPageDlg::showEmptyNote()
{
    bool isEmpty = true;
    for (const char* group : {"formatRow", "pathRow", "outputTabs", "themeTabs", "sourceReferences"})
        isEmpty = isEmpty && findChild<QWidget*>(group)->isHidden();
    mvShowGroup(NoteGroup, isEmpty);
}

/// The tab has changed already. It is put back while the user is asked, so that the tab and the page in front agree.
void CConversionSettingsPageDlg::themeTabChanged()
{
    QWidget* wanted = m_themeTabs->currentWidget();
    const QSignalBlocker quiet(m_themeTabs);
    m_themeTabs->setCurrentWidget(m_themePage);
    if (!mayLeaveThemePage())
        return;
    m_themeTabs->setCurrentWidget(wanted);
    m_themePage = static_cast<ThemeTemplateDlg*>(wanted);
}

bool CConversionSettingsPageDlg::mayLeaveThemePage()
{
    if (!m_themePage || !m_themePage->hasNoViews())
        return true;
    return ask(ts(186, u"Are you sure you don't want to specify view(s) to publish at this time?"),
        ts(188, u"ZENTREL ARKIN Administration"));
}

bool CConversionSettingsPageDlg::event(QEvent* event)
{
    const bool asksToLeave = event->type() == PageMessage::typeOf(pageLeaveMessage);
    if (!asksToLeave && event->type() != PageMessage::typeOf(pageFormatMessage))
        return Page::event(event);
    auto* message = static_cast<PageMessage*>(event);
    message->accept();
    inSlot([&] {
        if (!asksToLeave)
            message->result = m_formats->currentIndex();
        else if (!m_themeTabs->isHidden())
            message->result = mayLeaveThemePage() ? 0 : 1;
    });
    return true;
}

void CConversionSettingsPageDlg::showOptions()
{
    CAdvancedConvOpDlg(
        environment(), m_setting.task, static_cast<std::uint32_t>(formatCode()), formatLabel(), this, true)
        .DoModal();
}

} // namespace zn
