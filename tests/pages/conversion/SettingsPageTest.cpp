#include "addin/OutputFormats.h"
#include "addin/TaskVariables.h"
#include "pages/conversion/SettingsFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTextEdit>
#include <QToolButton>

namespace zn::test {
namespace {

using ::testing::ElementsAre;

class SettingsPage : public SettingsFixture {
protected:
    void choose(const QString& label) { on<QComboBox>("outputFormat")->setCurrentText(label); }
    /// A control of one of the two pages of a row of tabs.
    template <class Control> Control* of(const char* subPage, const char* role)
    {
        return find<Control>(*on<QWidget>(subPage), role);
    }
    /// What the page stored, without the settings of formats.
    std::vector<std::string> storedByPage()
    {
        arkin::Variables variables = stored();
        std::erase_if(variables, [](const auto& variable) {
            const TaskVariable* row = findTaskVariable(variable.first);
            return !row || row->owner != VariableOwner::ConversionPage;
        });
        return lines(variables);
    }
};

TEST_F(SettingsPage, StoresItsDefaultsAndTheSettingsOfAllFormats)
{
    setUp();
    ASSERT_EQ(page->save(task), S_OK);
    EXPECT_THAT(storedByPage(),
        ElementsAre("Asm3DPDFThemePath=theme.xml", "AsmPrimaryViews=0", "AsmThemeAndViewsChecks=13", "FileConfs=5",
            "FileFormat=<Prompt the user>", "FileSheets=5", "OutputConfs=3", "OutputSheets=3",
            "Part3DPDFThemePath=theme.xml", "PartPrimaryViews=0", "PartThemeAndViewsChecks=13", "SourceRefs=6"));
    const arkin::Variables all = stored();
    for (const TaskVariable& variable : taskVariables()) {
        if (variable.owner != VariableOwner::FormatOptions)
            continue;
        ASSERT_TRUE(all.contains(Text(variable.name))) << toUtf8(variable.name);
        EXPECT_EQ(all.at(Text(variable.name)), valueOf(variable.initial)) << toUtf8(variable.name);
    }
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
    ASSERT_EQ(page->save(task), S_OK);
    EXPECT_THAT(storedByPage(),
        ElementsAre("Asm3DPDFThemePath=theme.xml", "AsmPrimaryViews=0", "AsmThemeAndViewsChecks=13", "FileConfs=3",
            "FileFormat=Viewpane (*.vprt; *.vasm; *.vdrw)", "FileSheets=5", "NamedConf=Bo?t*", "OutputConfs=8",
            "OutputSheets=5", "Part3DPDFThemePath=theme.xml", "PartPrimaryViews=0", "PartThemeAndViewsChecks=13",
            "SourceRefs=1"));
}

} // namespace
} // namespace zn::test
