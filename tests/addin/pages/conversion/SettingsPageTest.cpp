#include "addin/variables/TaskVariables.h"
#include "tests/addin/pages/conversion/SettingsFixture.h"
#include "tests/support/pages/RefusingTask.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

namespace zn::test {
namespace {

class SettingsPage : public SettingsFixture {
protected:
    void choose(const QString& label) { on<QComboBox>("outputFormat")->setCurrentText(label); }
    /// A control of one of the two pages of a row of tabs.
    template <class Control> Control* of(const char* subPage, const char* role)
    {
        return find<Control>(*on<QWidget>(subPage), role);
    }
    /// What the page stored, without the settings of formats and the tabs of themes.
    std::vector<std::string> storedByPage()
    {
        zn::arkin::Variables variables = stored();
        std::erase_if(variables, [](const auto& variable) {
            const TaskVariable* row = findTaskVariable(variable.first);
            const bool isTheme = variable.first.starts_with(u"Asm") || variable.first.starts_with(u"Part");
            return isTheme || !row || row->owner != VariableOwner::ConversionPage;
        });
        return lines(variables);
    }
};

TEST_F(SettingsPage, StoresItsDefaults)
{
    setUp();
    ASSERT_TRUE(page->save(task));
    EXPECT_THAT(storedByPage(),
        ElementsAre("FileConfs=5", "FileFormat=<Prompt the user>", "FileSheets=5", "OutputConfs=3", "OutputSheets=3",
            "SourceRefs=6"));
}

/// An installation in another language may have stored its own label.
TEST_F(SettingsPage, FindsAFormatByItsLabelInAnyLanguage)
{
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"Parasolid bin\u00E4r (*.x_b)", "Parasolid Binary (*.x_b)"},
        {u"<benutzer fragen>", "<Prompt the user>"},
        {u"3d pdf - mbd (*.pdf)", "3D PDF - MBD (*.pdf)"},
        {u"Ein altes Format (*.x_b)", "<Prompt the user>"},
    };
    for (const auto& [storedLabel, shownLabel] : rows) {
        setUp({{u"FileFormat", Text(storedLabel)}});
        EXPECT_EQ(on<QComboBox>("outputFormat")->currentText().toStdString(), shownLabel);
        EXPECT_EQ(toUtf8(page->formatLabel()), shownLabel);
    }
    EXPECT_TRUE(of<QWidget>("configurations", "fileBox")->isVisible()) << "of a format that isn't known";
    // At a launch it is the administrator's, too.
    launch({{u"FileFormat", Text(u"Parasolid bin\u00E4r (*.x_b)")}}, 16);
    EXPECT_EQ(page->formatLabel(), u"Parasolid Binary (*.x_b)");
    EXPECT_FALSE(sees("outputFormat"));
}

TEST_F(SettingsPage, SaysWhileItIsTypedThatBracketsAreNoListOfLetters)
{
    setUp();
    of<QRadioButton>("configurations", "named")->click();
    auto* name = of<QLineEdit>("configurations", "name");
    name->selectAll();
    type(name, "*-M");
    EXPECT_FALSE(of<QLabel>("configurations", "bracketNote")->isVisible());
    name->home(false);
    type(name, "[ML]");
    EXPECT_TRUE(of<QLabel>("configurations", "bracketNote")->isVisible());
    of<QRadioButton>("configurations", "all")->click();
    EXPECT_FALSE(of<QLabel>("configurations", "bracketNote")->isVisible());
}

TEST_F(SettingsPage, StoresWhatAPersonChooses)
{
    setUp();
    choose("Viewpane (*.vprt; *.vasm; *.vdrw)");
    click(of<QRadioButton>("configurations", "named"));
    auto* name = of<QLineEdit>("configurations", "name");
    EXPECT_EQ(name->text(), "Default");
    name->selectAll();
    type(name, "Bo?t*");
    click(of<QRadioButton>("configurations", "sameFile"));
    click(of<QCheckBox>("configurations", "allowOutput"));
    on<QTabWidget>("outputTabs")->setCurrentIndex(1);
    click(of<QRadioButton>("sheets", "lastActive"));
    EXPECT_FALSE(of<QRadioButton>("sheets", "sameFile")->isEnabled());
    click(of<QCheckBox>("sheets", "allowFiles")); // greyed with its group, so it stays
    click(on<QRadioButton>("referencedVersion"));
    click(on<QCheckBox>("allowReferences"));
    ASSERT_TRUE(page->save(task));
    EXPECT_THAT(storedByPage(),
        ElementsAre("FileConfs=3", "FileFormat=Viewpane (*.vprt; *.vasm; *.vdrw)", "FileSheets=5", "NamedConf=Bo?t*",
            "OutputConfs=8", "OutputSheets=5", "SourceRefs=1"));
}

TEST_F(SettingsPage, ShowsAndKeepsWhatIsStored)
{
    const zn::arkin::Variables before{
        {u"FileFormat", Text(u"adobe pdf (*.PDF)")},
        {u"OutputConfs", 0}, // nothing set shows all
        {u"OutputSheets", 9},
        {u"NamedSheet", Text(u"Sheet?")},
        {u"FileSheets", 2},
        {u"FileConfs", Text(u"2")}, // a number as text; this format has no choice of grouping for configurations
        {u"SourceRefs", 3},
    };
    setUp(before);
    EXPECT_EQ(page->formatLabel(), u"Adobe PDF (*.pdf)");
    EXPECT_TRUE(of<QRadioButton>("configurations", "all")->isChecked());
    EXPECT_FALSE(of<QCheckBox>("configurations", "allowOutput")->isChecked());
    EXPECT_FALSE(of<QWidget>("configurations", "fileBox")->isVisible());
    EXPECT_FALSE(of<QLineEdit>("configurations", "name")->isEnabled());
    on<QTabWidget>("outputTabs")->setCurrentIndex(1);
    EXPECT_TRUE(of<QRadioButton>("sheets", "named")->isChecked());
    EXPECT_EQ(of<QLineEdit>("sheets", "name")->text(), "Sheet?");
    EXPECT_TRUE(of<QRadioButton>("sheets", "sameFile")->isVisible());
    EXPECT_TRUE(of<QRadioButton>("sheets", "sameFile")->isChecked());
    EXPECT_TRUE(on<QRadioButton>("referencedVersion")->isChecked());
    EXPECT_FALSE(on<QCheckBox>("allowReferences")->isChecked());

    ASSERT_TRUE(page->save(task));
    const std::vector<std::string> saved = storedByPage();
    EXPECT_THAT(saved,
        ElementsAre("FileConfs=4", "FileFormat=Adobe PDF (*.pdf)", "FileSheets=2", "NamedSheet=Sheet?", "OutputConfs=2",
            "OutputSheets=9", "SourceRefs=1"));
    reopenTask();
    page->load(task);
    ASSERT_TRUE(page->save(task));
    EXPECT_EQ(storedByPage(), saved);
}

TEST_F(SettingsPage, OffersTheOptionsOfFormatsThatHaveSome)
{
    setUp();
    auto* formats = on<QComboBox>("outputFormat");
    QStringList greyed;
    for (int row = 0; row < formats->count(); ++row) {
        formats->setCurrentIndex(row);
        EXPECT_EQ(formats->currentData().toInt(), row);
        if (!on<QPushButton>("conversionOptions")->isEnabled())
            greyed << QString::number(row);
    }
    EXPECT_EQ(greyed.join(' '), "0 1 2 4 7 11 12 14 15 21");

    choose("IGES (*.igs)");
    Answers answers({[](QWidget& modal) { modal.close(); }});
    click(on<QPushButton>("conversionOptions"));
    EXPECT_EQ(answers.shown(), QStringList("Advanced Scripting Options (IGES)"));
}

TEST_F(SettingsPage, NamesAVariableThatHoldsSomethingElse)
{
    for (const char16_t* name : {u"OutputSheets", u"FileConfs", u"AsmPrimaryViews", u"SourceRefs"}) {
        if (task)
            tasks.remove(std::exchange(task, nullptr)->task().id);
        openTask(TaskKind::Conversion, {{name, Text(u"all")}});
        page = pages().makeConversionPage(setting(TaskKind::Conversion), false);
        const Raised raised = raisedBy([&] { page->load(task); });
        EXPECT_EQ(raised.status, DISP_E_TYPEMISMATCH);
        EXPECT_THAT(raised.sentence, HasSubstr(toUtf8(name)));
        // The page stays usable: what it shows can be stored.
        EXPECT_TRUE(page->save(task));
    }
}

TEST_F(SettingsPage, NamesALibraryThatIsMissing)
{
    openTask(TaskKind::Conversion);
    const std::filesystem::path installation = platform.folder / "product";
    std::filesystem::create_directory(installation);
    for (const char* missing : {"LexMgr.dll", "TokenCtrl.dll", "FlowIcons.dll"}) {
        ports.registry.write(RegistryRoot::Machine, productKey, u"Location",
            RegistryValue::text(platform.machine.files().fromMachine(installation)));
        EXPECT_THAT(sentenceOf([&] { Pages(ports).makeConversionPage(setting(TaskKind::Conversion), false); }),
            HasSubstr(missing));
        EXPECT_TRUE(window.findChildren<QWidget*>().isEmpty()) << "a part of the page was left behind";
        std::filesystem::create_symlink(std::filesystem::path(ZN_BIN_DIR) / missing, installation / missing);
    }
    EXPECT_NO_THROW(Pages(ports).makeConversionPage(setting(TaskKind::Conversion), false));
}

TEST_F(SettingsPage, StopsAtTheFirstRefusedWrite)
{
    setUp();
    const auto refusingAfter = [&](std::size_t accepted) {
        return std::make_shared<RefusingTask>(task, [=](TextView, std::size_t written) { return written == accepted; });
    };
    const auto all = refusingAfter(1000);
    ASSERT_TRUE(page->save(all));
    // The settings of the formats first, then the page's own, sub-page by sub-page.
    const std::vector<std::string> own(all->written.end() - 12, all->written.end());
    EXPECT_THAT(own,
        ElementsAre("FileFormat", "SourceRefs", "OutputSheets", "FileSheets", "OutputConfs", "FileConfs",
            "Asm3DPDFThemePath", "AsmThemeAndViewsChecks", "AsmPrimaryViews", "Part3DPDFThemePath",
            "PartThemeAndViewsChecks", "PartPrimaryViews"));

    for (std::size_t accepted = all->written.size() - 12; accepted < all->written.size(); ++accepted) {
        const auto refusing = refusingAfter(accepted);
        expectStatus(E_ARK_PERMISSION_DENIED, [&] { page->save(refusing); });
        EXPECT_EQ(refusing->written.size(), accepted);
    }
    // A refused setting of a format is told at once, and the rest isn't tried.
    Answers answers({QMessageBox::Ok});
    const auto refusing = refusingAfter(3);
    expectStatus(E_FAIL, [&] { page->save(refusing); });
    EXPECT_EQ(refusing->written.size(), 3u);
}

} // namespace
} // namespace zn::test
