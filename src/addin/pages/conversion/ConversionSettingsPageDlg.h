#pragma once

#include "addin/pages/conversion/LaunchTabs.h"
#include "addin/pages/frame/Page.h"

#include <array>
#include <QIcon>

class QCheckBox;
class QComboBox;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace zn {

class CAsmTemplateDlg;
class CConfsTemplateDlg;
class CPartTemplateDlg;
class CSheetsTemplateDlg;
class OutputPathRow;
class ThemeTemplateDlg;

/// The conversion settings of a task: format, configurations and sheets, themes and views, version rule, and for each
/// whether the user may still change it. At a launch it shows only what was left to the user, with the output path.
class CConversionSettingsPageDlg final : public Page {
public:
    CConversionSettingsPageDlg(PageEnvironment& environment, QWidget* parent, const PageSetting& setting, bool launch);
    ~CConversionSettingsPageDlg() override;

    void load(const ObjectRef& task) override { LoadSettings(task, 0); }
    /// `selectedKinds` is a bit set: 4 assemblies, 8 parts, 16 anything else; 0 at setup.
    void LoadSettings(const ObjectRef& task, std::int32_t selectedKinds);
    void save(const ObjectRef& task) override;

    /// At a launch, after `LoadSettings`: whether there is anything for the user to decide.
    bool isPageNeeded() const { return m_isNeeded; }
    Text formatLabel() const;
    std::int32_t formatCode() const;

protected:
    /// Answers the messages of the page's holder.
    bool event(QEvent* event) override;

private:
    enum Control : int {
        FormatLabel = 301,
        Formats = 302,
        Options = 303,
        PathLabel = 304,
        PathEdit = 305,
        PathMenu = 306,
        Example = 307,
        OutputTabs = 308,
        ThemeTabs = 309,
        ReferenceBox = 310,
        AsBuilt = 311,
        Latest = 312,
        AllowReferences = 313,
        EmptyNote = 314
    };
    enum Group : int { FormatGroup = 1, PathGroup, OutputGroup, ThemeGroup, ReferenceGroup, NoteGroup };

    /// One tab with its page, which also exists while the tab doesn't.
    struct Tab {
        QWidget* page = nullptr;
        QIcon icon;
        QString label;
    };
    using TabPair = std::array<Tab, 2>;

    QWidget* makeFormatRow();
    QWidget* makePathRow();
    QTabWidget* makeOutputTabs();
    QTabWidget* makeThemeTabs();
    QWidget* makeReferenceBox();
    QWidget* makeEmptyNote();
    void connectControls();

    void loadForLaunch(const ObjectRef& task, std::int32_t selectedKinds);
    void loadReferences(const ObjectRef& task);
    void persistOptions(const ObjectRef& task);
    void savePaths(const ObjectRef& task);

    void refreshForFormat();
    static void putTabs(QTabWidget& tabs, const TabPair& pair, TabsShown shown);
    void showOutputTabs(TabsShown tabs);
    void showThemeTabs(TabsShown tabs);
    void showEmptyNote();

    void themeTabChanged();
    /// Asks about a page in front that selects no views.
    bool mayLeaveThemePage();
    void showOptions();

    const PageSetting m_setting;
    const bool m_launch;
    bool m_isNeeded = false;
    bool m_sheetsInFront = false;
    LaunchFreedom m_freedom;                 ///< at a launch only
    ThemeTemplateDlg* m_themePage = nullptr; ///< the one in front
    QPointer<QWidget> m_launchParent;

    QComboBox* m_formats = nullptr;
    QPushButton* m_options = nullptr;
    OutputPathRow* m_path = nullptr; ///< at a launch only
    QTabWidget* m_outputTabs = nullptr;
    QTabWidget* m_themeTabs = nullptr;
    TabPair m_outputPair;
    TabPair m_themePair;
    CConfsTemplateDlg* m_confs = nullptr;
    CSheetsTemplateDlg* m_sheets = nullptr;
    CAsmTemplateDlg* m_assembly = nullptr;
    CPartTemplateDlg* m_part = nullptr;
    QRadioButton* m_asBuilt = nullptr;
    QRadioButton* m_latest = nullptr;
    QCheckBox* m_allowReferences = nullptr;
};

} // namespace zn
