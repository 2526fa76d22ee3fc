#include "addin/pages/conversion/ConversionSettingsPageDlg.h"

#include "addin/installation/FormatLabels.h"
#include "addin/pages/conversion/AsmTemplateDlg.h"
#include "addin/pages/conversion/ConfsTemplateDlg.h"
#include "addin/pages/conversion/FormatList.h"
#include "addin/pages/conversion/OutputPathRow.h"
#include "addin/pages/conversion/PartTemplateDlg.h"
#include "addin/pages/conversion/SheetsTemplateDlg.h"
#include "addin/pages/options/AdvancedConvOpDlg.h"
#include "addin/variables/OutputFormats.h"
#include "addin/variables/TaskVariables.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>

namespace zn {

namespace {

constexpr std::int32_t useReferencedVersion = 1;
constexpr std::int32_t useLatestVersion = 2;

/// The codes of the formats with options, in the order in which a save makes sure of their variables.
constexpr std::uint32_t formatsWithOptions[] = {5, 10, 22, 3, 16, 17, 13, 18, 19, 20, 6, 9, 8};

} // namespace

void CConversionSettingsPageDlg::LoadSettings(const ObjectRef& task, std::int32_t selectedKinds)
{
    m_sheetsInFront = false;
    if (const std::optional<Text> format = readText(task, u"FileFormat"))
        selectFormat(*m_formats, environment(), *format);
    if (m_launch)
        m_freedom = readLaunchFreedom(
            task, [&](TextView label) { return findFormatInAnyLanguage(environment().platform(), label); });

    m_sheets->setFormat(formatCode());
    m_confs->setFormat(formatCode());
    for (Page* page : std::initializer_list<Page*>{m_sheets, m_confs, m_assembly, m_part})
        page->load(task);
    refreshForFormat();
    loadReferences(task);
    if (m_launch)
        loadForLaunch(task, selectedKinds);
}

void CConversionSettingsPageDlg::loadReferences(const ObjectRef& task)
{
    const std::optional<std::int32_t> stored = readInteger(task, u"SourceRefs");
    if (stored)
        (*stored & useReferencedVersion ? m_asBuilt : m_latest)->setChecked(true);
    m_allowReferences->setChecked(stored.value_or(userMayChangeVersions) & userMayChangeVersions);
}

void CConversionSettingsPageDlg::loadForLaunch(const ObjectRef& task, std::int32_t selectedKinds)
{
    const std::optional<Text> path = readText(task, u"OutputPath");
    m_isNeeded = !openQuestions(m_freedom, selectedKinds).empty();
    mbShowCtrl(AllowReferences, false);
    mvShowGroup(FormatGroup, m_freedom.format);
    mvShowGroup(PathGroup, m_freedom.path);
    mvShowGroup(ReferenceGroup, m_freedom.versions);

    if (formatCode() == pdf3dFormatCode) {
        m_freedom.themes = themesLeftOpen(m_freedom.themes, selectedKinds);
        showThemeTabs(themeTabs(m_freedom.themes, selectedKinds));
    } else {
        showOutputTabs(outputTabsForFixedFormat(m_freedom.output, formatCode()));
    }
    showEmptyNote();
    m_path->setText(path.value_or(Text()));
}

/// The English label in every language, because the task is read on machines that speak another one.
Text CConversionSettingsPageDlg::formatLabel() const
{
    return outputFormats()[static_cast<std::size_t>(formatCode())].label;
}

std::int32_t CConversionSettingsPageDlg::formatCode() const { return selectedFormat(*m_formats); }

void CConversionSettingsPageDlg::savePaths(const ObjectRef& task)
{
    const Text path = m_path->text();
    writeVariable(task, u"OutputPath", path);
    const Text secondPath = readText(task, u"OutputPath2").value_or(Text());
    writeVariable(task, u"UsedVariables", m_path->usedVariables(secondPath));
}

/// Afterwards the settings of all formats exist, whether their dialogs were ever opened or not.
void CConversionSettingsPageDlg::persistOptions(const ObjectRef& task)
{
    for (const std::uint32_t code : formatsWithOptions) {
        // The failure itself has been told.
        if (!CAdvancedConvOpDlg(environment(), task, code, {}, this, false).PersistOptions())
            throw StatusError(E_FAIL, "The conversion settings were not stored.");
    }
}

void CConversionSettingsPageDlg::save(const ObjectRef& task)
{
    persistOptions(task);
    writeVariable(task, u"FileFormat", formatLabel());
    std::int32_t versions = m_asBuilt->isChecked() ? useReferencedVersion : useLatestVersion;
    versions |= m_allowReferences->isChecked() ? userMayChangeVersions : 0;
    writeVariable(task, u"SourceRefs", versions);
    if (m_launch)
        savePaths(task);
    for (Page* page : std::initializer_list<Page*>{m_sheets, m_confs, m_assembly, m_part})
        page->save(task);
}

} // namespace zn
