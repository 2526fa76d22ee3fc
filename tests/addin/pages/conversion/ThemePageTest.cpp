#include "contracts/host/PageMessage.h"
#include "tests/addin/pages/conversion/SettingsFixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QTabWidget>
#include <QToolButton>

namespace zn::test {
namespace {

const char* const noViews = "Are you sure you don't want to specify view(s) to publish at this time?";

/// The sub-pages for 3D PDFs.
class ThemePage : public SettingsFixture {
protected:
    /// A control of the assembly's sub-page.
    template <class Control> Control* ofAssembly(const char* role)
    {
        return find<Control>(*on<QWidget>("assembly"), role);
    }
    QWidget* themeEdit() { return ofAssembly<QWidget>("themePath")->focusProxy(); }
    int leave() { return sendPageMessage(widget, pageLeaveMessage); }

    std::vector<std::string> storedOfAssembly()
    {
        zn::arkin::Variables variables = stored();
        std::erase_if(variables, [](const auto& variable) { return !variable.first.starts_with(u"Asm"); });
        return lines(variables);
    }
    static zn::arkin::Variables theme(const char16_t* path, int checks, int views)
    {
        return {{u"FileFormat", Text(u"3D PDF - MBD (*.pdf)")}, {u"Asm3DPDFThemePath", Text(path)},
            {u"AsmThemeAndViewsChecks", checks}, {u"AsmPrimaryViews", views}};
    }
};

TEST_F(ThemePage, KeepsTheThemesFileOutOfSight)
{
    const struct {
        const char16_t* stored;
        const char* example;
        const char* typed;
        const char* saved;
    } rows[] = {
        {u"C:\\themes\\theme.xml", "Example: C:\\themes\\", "", "C:\\themes\\theme.xml"},
        {u"theme.xml", "Example: ", "", "theme.xml"},
        {u"", "Example: ", "C:\\themes  ", "C:\\themes\\theme.xml"},
        {u"C:\\theme.xml.d\\theme.xml", "Example: C:\\.d\\", "", "C:\\.d\\theme.xml"},
    };
    for (const auto& row : rows) {
        setUp(theme(row.stored, 13, 0));
        EXPECT_EQ(ofAssembly<QLabel>("themeExample")->text(), row.example);
        type(themeEdit(), row.typed);
        ASSERT_TRUE(page->save(task));
        EXPECT_EQ(stored().at(u"Asm3DPDFThemePath").toText(), toText(row.saved));
    }
}

TEST_F(ThemePage, PutsTheVaultsRootInPlaceOfTheSelection)
{
    setUp(theme(u"D:\\old\\theme.xml", 13, 0));
    press(themeEdit(), Qt::Key_A, Qt::ControlModifier);
    click(ofAssembly<QToolButton>("themePathMenu"));
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_EQ(menu->actions().front()->text(), "Vault Root Folder Path");
    press(menu, Qt::Key_Down);
    press(menu, Qt::Key_Return);
    Text root;
    ASSERT_EQ(vault->GetRootFolderPath(root), S_OK);
    EXPECT_EQ(ofAssembly<QLabel>("themeExample")->text(), "Example: " + QString::fromStdU16String(root));
    press(themeEdit(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(ofAssembly<QLabel>("themeExample")->text(), "Example: D:\\old\\");
    press(themeEdit(), Qt::Key_Y, Qt::ControlModifier);
    ASSERT_TRUE(page->save(task));
    EXPECT_EQ(stored().at(u"Asm3DPDFThemePath"), Value(Text(u"<VaultPath>\\theme.xml")));
}

TEST_F(ThemePage, ChoosesViewsByMouseAndKeys)
{
    setUp(theme(u"theme.xml", 4 | 2, 16));
    EXPECT_TRUE(ofAssembly<QToolButton>("viewTop")->isChecked());
    EXPECT_EQ(ofAssembly<QToolButton>("viewTop")->toolTip(), "Top");
    click(ofAssembly<QToolButton>("viewTop"));
    auto* front = ofAssembly<QToolButton>("viewFront");
    front->setFocus();
    // Left, back over the middle to the far right, and up to the pictures in perspective.
    const std::pair<Qt::Key, const char*> walk[] = {{Qt::Key_Left, "viewLeft"}, {Qt::Key_Up, "viewLeft"},
        {Qt::Key_Right, "viewFront"}, {Qt::Key_Right, "viewRight"}, {Qt::Key_Right, "viewBack"},
        {Qt::Key_Right, "viewBack"}, {Qt::Key_Up, "viewDimetric"}, {Qt::Key_Left, "viewIsometric"},
        {Qt::Key_Left, "viewTop"}, {Qt::Key_Down, "viewFront"}, {Qt::Key_Down, "viewBottom"}};
    for (const auto& [key, expected] : walk) {
        press(window.focusWidget(), key);
        EXPECT_EQ(window.focusWidget()->objectName(), expected);
    }
    press(window.focusWidget(), Qt::Key_Space);
    press(window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), ofAssembly<QCheckBox>("allowViews"));
    ASSERT_TRUE(page->save(task));
    EXPECT_THAT(storedOfAssembly(),
        ElementsAre("Asm3DPDFThemePath=theme.xml", "AsmPrimaryViews=32", "AsmThemeAndViewsChecks=6"));

    // Switched off and on again, the views are forgotten.
    click(ofAssembly<QCheckBox>("primaryViews"));
    EXPECT_FALSE(front->isEnabled());
    click(ofAssembly<QCheckBox>("primaryViews"));
    ASSERT_TRUE(page->save(task));
    EXPECT_THAT(storedOfAssembly(),
        ElementsAre("Asm3DPDFThemePath=theme.xml", "AsmPrimaryViews=0", "AsmThemeAndViewsChecks=6"));
}

TEST_F(ThemePage, AsksBeforeItIsLeftWithoutViews)
{
    const struct {
        int checks;
        int views;
        bool asks;
    } rows[] = {{4, 0, false}, {0, 0, true}, {2, 0, true}, {2 | 4, 0, true}, {2, 4, false}, {2 | 4, 4, false}};
    const auto pressNo = [](QWidget& box) { static_cast<QMessageBox&>(box).button(QMessageBox::No)->click(); };
    for (const auto& row : rows) {
        setUp(theme(u"theme.xml", row.checks, row.views));
        Answers answers(std::vector<Answers::Answer>(row.asks ? 1 : 0, pressNo));
        EXPECT_EQ(leave(), row.asks ? 1 : 0);
        EXPECT_EQ(answers.shown(), row.asks ? QStringList(noViews) : QStringList()) << row.checks;
    }

    setUp(theme(u"theme.xml", 0, 0));
    auto* tabs = on<QTabWidget>("themeTabs");
    Answers answers({QMessageBox::No, QMessageBox::Yes, QMessageBox::Yes});
    for (const char* inFront : {"Assembly", "Part", "Part"}) {
        tabs->setCurrentIndex(1);
        EXPECT_EQ(tabs->tabText(tabs->currentIndex()), inFront);
    }
    EXPECT_EQ(leave(), 0) << "the part's views are chosen";
    tabs->setCurrentIndex(0);
    EXPECT_EQ(leave(), 0) << "yes";
}

TEST_F(ThemePage, DoesNotAskForAnotherFormat)
{
    zn::arkin::Variables variables = theme(u"theme.xml", 0, 0);
    variables[u"FileFormat"] = Text(u"STL (*.stl)");
    setUp(variables);
    Answers answers({});
    EXPECT_EQ(leave(), 0);
    EXPECT_EQ(sendPageMessage(widget, pageFormatMessage), 19);
}

} // namespace
} // namespace zn::test
