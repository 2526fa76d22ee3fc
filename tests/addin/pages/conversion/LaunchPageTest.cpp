#include "addin/variables/LaunchFreedom.h"
#include "contracts/host/PageMessage.h"
#include "qtglue/Texts.h"
#include "tests/addin/pages/conversion/SettingsFixture.h"

#include <QComboBox>
#include <QLabel>
#include <QTabWidget>

namespace zn::test {
namespace {

constexpr int assemblies = 4;
constexpr int parts = 8;
constexpr int others = 16;
constexpr int absent = -1;

const char16_t* const pdf3d = u"3D PDF - MBD (*.pdf)";

/// What an administrator stored and what the launch makes of it.
struct LaunchCase {
    const char* name;
    const char16_t* format;
    int outputConfs, fileConfs, outputSheets, fileSheets;
    int assemblyChecks, partChecks;
    int kinds;
    const char* picture;
    bool isNeeded;
};

// Everything else is fixed: path and version rule.
const LaunchCase launchCases[] = {
    {"nothing open", u"IGES (*.igs)", 2, 4, 2, 4, 0, 0, parts, "note", false},
    {"both sides, outputs", u"IGES (*.igs)", 3, 4, 3, 4, 0, 0, parts, "Configurations*[output] Sheets", true},
    {"both sides whole", u"Viewpane (*.vprt; *.vasm; *.vdrw)", 3, 5, 3, 5, 0, 0, parts,
        "Configurations*[output files] Sheets", true},
    {"groupings alone", u"IGES (*.igs)", 2, 5, 2, 5, 0, 0, parts, "note", false},
    {"groupings alone, PDF", u"Adobe PDF (*.pdf)", 2, 5, 2, 5, 0, 0, others, "Sheets*[files]", false},
    {"one output and the other's grouping", u"IGES (*.igs)", 3, 4, 2, 5, 0, 0, parts, "Configurations*[output]", true},
    {"configurations whole", u"IGES (*.igs)", 3, 5, 2, 4, 0, 0, parts, "Configurations*[output]", true},
    {"sheets whole", u"Adobe PDF (*.pdf)", 2, 4, 3, 5, 0, 0, others, "Sheets*[output files]", true},
    {"configurations, half", u"IGES (*.igs)", 3, 4, 2, 4, 0, 0, parts, "note", true},
    {"sheets, half", u"Adobe PDF (*.pdf)", 2, 4, 2, 5, 0, 0, others, "note", false},
    {"a fixed grouping comes back", u"Adobe PDF (*.pdf)", 3, 4, 3, 4, 0, 0, others, "Configurations*[output] Sheets",
        true},
    {"output variables absent", u"IGES (*.igs)", absent, absent, absent, absent, 0, 0, parts,
        "Configurations*[output] Sheets", true},

    {"themes, parts", pdf3d, 2, 4, 2, 4, 9, 9, parts, "Part*[theme views]", true},
    {"themes, assemblies", pdf3d, 2, 4, 2, 4, 9, 1, assemblies | others, "Assembly*[theme views]", true},
    {"themes, both kinds", pdf3d, 2, 4, 2, 4, 8, 1, assemblies | parts, "Assembly*[views] Part", true},
    {"themes, drawings only", pdf3d, 3, 5, 3, 5, 9, 9, others, "note", true},
    {"no theme", pdf3d, 3, 5, 3, 5, 6, 6, assemblies | parts, "note", false},
    {"assembly's theme, selected", pdf3d, 2, 4, 2, 4, 1, 0, assemblies | parts, "Assembly*[theme]", true},
    {"part's theme, selected", pdf3d, 2, 4, 2, 4, 4, 8, assemblies | parts, "Part*[views]", true},
    {"assembly's theme, parts selected", pdf3d, 2, 4, 2, 4, 9, 0, parts, "note", false},
    {"part's theme, assemblies selected", pdf3d, 2, 4, 2, 4, 0, 9, assemblies | others, "note", false},
    {"theme variables absent", pdf3d, 2, 4, 2, 4, absent, absent, parts, "Part*[theme views]", true},
};

/// What the launch's window hears of.
class FormatChanges : public QObject {
public:
    int count = 0;

    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == PageMessage::typeOf(pageFormatChangedMessage) ? 1 : 0;
        return false;
    }
};

class LaunchPage : public SettingsFixture {
protected:
    static zn::arkin::Variables variablesOf(const LaunchCase& launched)
    {
        zn::arkin::Variables variables{
            {u"FileFormat", Text(launched.format)}, {u"PromptOutput", false}, {u"SourceRefs", 2}};
        const std::pair<const char16_t*, int> numbers[] = {{u"OutputConfs", launched.outputConfs},
            {u"FileConfs", launched.fileConfs}, {u"OutputSheets", launched.outputSheets},
            {u"FileSheets", launched.fileSheets}, {u"AsmThemeAndViewsChecks", launched.assemblyChecks},
            {u"PartThemeAndViewsChecks", launched.partChecks}};
        for (const auto& [name, number] : numbers) {
            if (number != absent)
                variables[name] = number;
        }
        return variables;
    }

    /// What is to be seen: "format path", the tabs with a star at the one in front and the boxes on it, "references".
    std::string picture()
    {
        std::string seen;
        const auto add = [&seen](const std::string& what) { seen += (seen.empty() ? "" : " ") + what; };
        for (const auto& [role, what] : {std::pair("formatRow", "format"), std::pair("pathRow", "path")}) {
            if (sees(role))
                add(what);
        }
        for (const char* tabs : {"outputTabs", "themeTabs"}) {
            if (sees(tabs))
                add(tabsOf(*on<QTabWidget>(tabs)));
        }
        if (sees("sourceReferences"))
            add("references");
        if (sees("emptyNote"))
            add("note");
        return seen;
    }

private:
    static std::string tabsOf(const QTabWidget& tabs)
    {
        std::string seen;
        for (int tab = 0; tab < tabs.count(); ++tab) {
            seen += (seen.empty() ? "" : " ") + tabs.tabText(tab).toStdString();
            if (tab == tabs.currentIndex())
                seen += "*[" + boxesOf(*tabs.widget(tab)) + "]";
        }
        return seen;
    }
    static std::string boxesOf(const QWidget& page)
    {
        std::string seen;
        for (const auto& [role, what] : {std::pair("outputBox", "output"), std::pair("fileBox", "files"),
                 std::pair("themeBox", "theme"), std::pair("viewsBox", "views")}) {
            const auto* box = page.findChild<QWidget*>(role);
            if (box && box->isVisible())
                seen += (seen.empty() ? "" : " ") + std::string(what);
        }
        return seen;
    }
};

TEST_F(LaunchPage, ShowsWhatTheAdministratorLeftOpen)
{
    openTask(TaskKind::Conversion);
    for (const LaunchCase& launched : launchCases) {
        SCOPED_TRACE(launched.name);
        launch(variablesOf(launched), launched.kinds);
        EXPECT_EQ(picture(), launched.picture);
        EXPECT_EQ(page->isPageNeeded(), launched.isNeeded);
        EXPECT_EQ(openQuestions(readLaunchFreedom(run), launched.kinds).empty(), !launched.isNeeded);
    }
}

TEST_F(LaunchPage, ShowsEachRowThatIsOpen)
{
    openTask(TaskKind::Conversion);
    LaunchCase fixed{"", u"STL (*.stl)", 2, 4, 2, 4, 0, 0, parts, "", false};
    const struct {
        const char16_t* variable = u"";
        std::optional<Value> value;
        const char* picture = "";
    } rows[] = {
        {u"PromptOutput", Value(true), "path"},
        {u"PromptOutput", std::nullopt, "path"},
        {u"SourceRefs", Value(5), "references"},
        {u"SourceRefs", std::nullopt, "references"},
        // The format is open: the list begins with the first real format, which parts can have.
        {u"FileFormat", Value(Text(u"<Prompt the user>")), "format"},
        {u"FileFormat", Value(Text(u"Lost format (*.lost)")), "format"},
        {u"FileFormat", std::nullopt, "format"},
        {u"FileFormat", Value(Text(u"stl (*.STL)")), "note"},
    };
    for (const auto& row : rows) {
        zn::arkin::Variables variables = variablesOf(fixed);
        if (row.value)
            variables[row.variable] = *row.value;
        else
            variables.erase(row.variable);
        launch(variables, fixed.kinds);
        EXPECT_EQ(picture(), row.picture) << toUtf8(row.variable);
        const bool isOpen = std::string(row.picture) != "note";
        EXPECT_EQ(page->isPageNeeded(), isOpen);
        EXPECT_EQ(openQuestions(readLaunchFreedom(run), fixed.kinds).empty(), !isOpen);
    }
    EXPECT_EQ(page->formatCode(), 19);
}

TEST_F(LaunchPage, FollowsTheFormatThatThePersonChooses)
{
    openTask(TaskKind::Conversion);
    launch(variablesOf({"", u"<Prompt the user>", 2, 5, 3, 5, 9, 9, parts, "", true}), parts);
    EXPECT_EQ(page->formatLabel(), pdf3d);
    const std::pair<const char*, const char*> steps[] = {
        {"Adobe PDF (*.pdf)", "format Sheets*[output files]"},
        {"Viewpane (*.vprt; *.vasm; *.vdrw)", "format Configurations Sheets*[output files]"},
        {"IGES (*.igs)", "format Sheets*[output]"},
        {"3D PDF - MBD (*.pdf)", "format Part*[theme views]"},
    };
    FormatChanges changes;
    window.installEventFilter(&changes);
    for (const auto& [format, expected] : steps) {
        on<QComboBox>("outputFormat")->setCurrentText(format);
        EXPECT_EQ(picture(), expected) << format;
    }
    EXPECT_EQ(changes.count, 4);
}

TEST_F(LaunchPage, StoresThePathAndTheVariablesOfBothPaths)
{
    for (const char16_t* name : {u"Number", u"Title", u"Author"})
        m_vault.vault.cards().addVariable(name);
    openTask(TaskKind::Conversion);
    launch({{u"FileFormat", Text(u"IGES (*.igs)")}, {u"OutputPath", Text()},
               {u"OutputPath2", Text(u"%Author%\\<Filename>")}},
        parts);
    EXPECT_EQ(on<QLabel>("example")->text(), "Example: ");

    Text root;
    ASSERT_EQ(vault->GetRootFolderPath(root), S_OK);
    type(on<QWidget>("outputPath")->focusProxy(), shown(root) + "\\%Number%\\<Filename>-%Number%");
    EXPECT_EQ(on<QLabel>("example")->text(), "Example: " + shown(root) + "\\%Number%\\Part-%Number%.igs");
    ASSERT_TRUE(page->save(run));
    const zn::arkin::Variables& own = run->ownVariables();
    EXPECT_EQ(own.at(u"OutputPath"), Value(Text(u"<VaultPath>\\%Number%\\<Filename>-%Number%")));
    EXPECT_EQ(own.at(u"UsedVariables"), Value(Text(u"Number,Author")));
    EXPECT_EQ(own.at(u"SourceRefs"), Value(6));
    EXPECT_EQ(own.at(u"OutputConfs"), Value(3));
    EXPECT_FALSE(stored().contains(u"OutputPath")) << "a launch has changed the task";
}

TEST_F(LaunchPage, LeadsTheKeyboardFromTopToBottom)
{
    openTask(TaskKind::Conversion);
    launch({{u"AsmThemeAndViewsChecks", 15}}, parts | assemblies);
    on<QComboBox>("outputFormat")->setFocus();
    QStringList stops;
    for (int i = 0; i < 11; ++i) {
        press(window.focusWidget(), Qt::Key_Tab);
        stops << window.focusWidget()->objectName();
    }
    EXPECT_EQ(stops.join(' ').toStdString(),
        "outputPathEdit outputPathMenu qt_tabwidget_tabbar themePathEdit themePathMenu views3d primaryViews viewFront "
        "referencedVersion outputFormat outputPathEdit");
}

} // namespace
} // namespace zn::test
