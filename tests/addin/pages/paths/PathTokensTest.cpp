#include "addin/pages/paths/PathTokens.h"

#include "addin/libraries/tokenctrl/TokenCtrl.h"
#include "addin/pages/frame/PageEnvironment.h"
#include "addin/pages/paths/ExampleText.h"
#include "addin/variables/UsedVariables.h"
#include "arkin/vault/VaultObject.h"
#include "qtglue/Texts.h"
#include "tests/arkin/VaultFixture.h"
#include "tests/support/FakeHost.h"
#include "tests/support/InstalledPlatform.h"

#include <gmock/gmock.h>
#include <QApplication>
#include <QMenu>

namespace zn {
namespace {

using ::testing::ElementsAre;

class PathTokensTest : public ::testing::Test {
protected:
    /// The labels of the box's menu, levels with their entries in brackets.
    static QString menuText(QMenu& menu)
    {
        QStringList labels;
        Q_EMIT menu.aboutToShow();
        for (QAction* action : menu.actions())
            labels.append(action->menu() ? action->text() + "[" + menuText(*action->menu()) + "]" : action->text());
        return labels.join(",");
    }

    QString menuOf(tokenctrl::TokenBox& shownBox)
    {
        if (!shownBox.mbShowMenu(nullptr, nullptr))
            return "none";
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        auto text = menuText(*menu);
        menu->close();
        return text;
    }

    test::InstalledPlatform platform;
    Platform ports = platform.ports();
    PageEnvironment environment{ports};
    zn::arkin::test::TestVault real{platform.folder.path()};
    std::shared_ptr<IArkVault> vault = std::make_shared<zn::arkin::VaultObject>(real.vault);
    std::unique_ptr<tokenctrl::TokenBox> box = environment.makeTokenBox();
};

constexpr auto pathEntries = "Source File Name,Source File Extension,Configuration Name,Source Folder Path,"
                             "Vault Root Folder Path,Source File Revision,Source File Version,"
                             "Source File Workflow State,Todays Date";

TEST_F(PathTokensTest, OffersTheVaultsVariablesByTheirInitials)
{
    AddPathTokens(environment, *box);
    EXPECT_EQ(menuOf(*box), pathEntries);
    for (const char16_t* name : {u"Alpha", u"Amber", u"Beta", u"alpha2", u"Zeta", u"Zoe", u"Abc"})
        real.vault.cards().addVariable(name);
    const std::vector<Text> names = ReadVaultVariables(vault);
    ASSERT_EQ(names.size(), 7U);
    AddVariableTokens(environment, *box, {u"Alpha", u"Amber", u"Beta", u"alpha2", u"Zeta", u"Zoe"});
    EXPECT_EQ(menuOf(*box).mid(static_cast<qsizetype>(std::string_view(pathEntries).size())),
        ",Variables[Alp - Amb[Alpha,Amber],Beta,alpha2,Zet - Zoe[Zeta,Zoe]]");
}

TEST_F(PathTokensTest, GroupsNeighboursByInitialAndLooksThemUpAsWritten)
{
    const auto paths = [](const std::vector<Text>& names) {
        std::vector<std::string> found;
        found.reserve(names.size());
        const VarMenuHelper helper(names);
        for (const Text& name : names)
            found.push_back(toUtf8(helper.path(name)));
        return found;
    };
    EXPECT_THAT(paths({u"Alpha", u"Amber", u"Beta"}), ElementsAre("Alp - Amb\\Alpha", "Alp - Amb\\Amber", "Beta"));
    EXPECT_THAT(paths({u"Alpha", u"alpha", u"B"}), ElementsAre("Alp - alp\\Alpha", "alpha", "B"));
    // A later group of an initial takes the place of an earlier one; a single name leaves it.
    EXPECT_THAT(paths({u"A1", u"A2", u"B", u"A3", u"A4", u"B", u"A5"}),
        ElementsAre("A3 - A4\\A1", "A3 - A4\\A2", "B", "A3 - A4\\A3", "A3 - A4\\A4", "B", "A3 - A4\\A5"));
    EXPECT_THAT(paths({u"Ärmel", u"Ästhet", u""}), ElementsAre("Ärm - Äst\\Ärmel", "Ärm - Äst\\Ästhet", ""));
}

TEST_F(PathTokensTest, CollectsTheUsedVariablesInTheVaultsOrder)
{
    const std::vector<Text> names{u"Number", u"Title", u"title", u"Note"};
    std::vector<Text> used;
    EXPECT_EQ(JoinVariableNames(used), u"");
    CollectUsedVariables(u"%title%_%Note%_%Note%_%Other%", u"%Number%", names, used);
    EXPECT_EQ(JoinVariableNames(used), u"Number,title,Note");
    CollectUsedVariables(u"%Title%", u"", names, used);
    EXPECT_EQ(JoinVariableNames(used), u"Number,title,Note,Title") << "a name once found stays";
}

TEST_F(PathTokensTest, FoldsTheVaultsRootAtTheBeginning)
{
    test::FakeHost host;
    host.root = u"C:\\Vault";
    const auto folded = [&](const char16_t* text) {
        box->mvSetText(text);
        FoldVaultRoot(*box, *host.vault());
        return toUtf8(box->moGetText());
    };
    EXPECT_EQ(folded(u"c:\\vault"), "<VaultPath>");
    EXPECT_EQ(folded(u"C:\\VAULT\\a\\<Filename>"), "<VaultPath>\\a\\<Filename>");
    EXPECT_EQ(folded(u"D:\\C:\\Vault"), "D:\\C:\\Vault");
    EXPECT_EQ(folded(u"C:\\Vaul"), "C:\\Vaul");
    host.root.clear();
    EXPECT_EQ(folded(u"x"), "x");
}

TEST_F(PathTokensTest, TheExampleShowsASampleFile)
{
    platform.clock.time = 1'520'244'000; // 5 March 2018, noon in Greenwich
    real.vault.cards().addVariable(u"Number");
    Registry& registry = platform.machine.registry();
    registry.write(RegistryRoot::User, u"Software\\Zentrel\\Applications\\Arkin Enterprise\\Vaults\\Test", u"DateFmt",
        RegistryValue::number(103));
    Text rootText;
    vault->GetRootFolderPath(rootText);
    const QString root = shown(rootText);
    const auto example = [&](const char16_t* text, const char16_t* label, int code) {
        box->mvSetText(text);
        return BuildExampleText(environment, *vault, *box, label, code);
    };
    EXPECT_EQ(example(u"<Path>\\<Filename>_<Extension>_<Configuration>", u"IGES (*.igs)", 13),
        "Example: " + root + "\\Part_zenprt_Default.igs");
    EXPECT_EQ(example(u"<VaultPath>\\%Number%_<Revision>_<Version>_<WorkflowState>_<Today>_<Other>",
                  u"Viewpane (*.vprt; *.vasm; *.vdrw)", 10),
        "Example: " + root + "\\%Number%_A1_1_Approved_05_03_2018_<Other>.vprt");
    EXPECT_EQ(example(u"x", u"<Prompt the user>", 0), "Example: x.pdf");
    EXPECT_EQ(example(u"", u"IGES (*.igs)", 13), "Example: ");
}

} // namespace
} // namespace zn
