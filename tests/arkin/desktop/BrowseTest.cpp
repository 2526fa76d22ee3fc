#include "arkin/desktop/BrowseDialog.h"

#include "tests/arkin/desktop/DesktopFixture.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTreeView>

namespace zn::arkin::test {

using zn::Text;

namespace {

QStringList rowsOf(const QAbstractItemView& view, const QModelIndex& parent = {})
{
    QStringList rows;
    for (int row = 0; row < view.model()->rowCount(parent); ++row)
        rows << view.model()->index(row, 0, parent).data().toString();
    return rows;
}

QPushButton& okOf(QWidget& dialog) { return *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok); }

void clickRow(QTreeView& view, const QModelIndex& index, Qt::KeyboardModifiers modifiers = {})
{
    QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, view.visualRect(index).center());
}

} // namespace

class BrowseTest : public DesktopFixture {
protected:
    BrowseTest()
    {
        for (const auto* name : {"Parts/b.ZENPRT", "Parts/a.zenprt", "Parts/note", "Parts/Deep/c.step", "top.step"})
            vault.addReleased(name, name);
        vault.vault.createFolder(vault.path("Secret/Below"));
        vault.vault.permissions().set(*vault.vault.findFolder(vault.path("Secret")), u"anna", {false, false, false});
        object->setDesktop(&desktop);
    }
    QTreeView& folders(QWidget& dialog) { return *find<QTreeView>(dialog, "folders"); }
    QTreeView& filesOf(QWidget& dialog) { return *find<QTreeView>(dialog, "files"); }

    HostDesktop desktop{{"offscreen", {}}, true};
    Text filter = u"Parts (*.zenprt)|*.zenprt; *.prt|All files|*.*|";
};

TEST_F(BrowseTest, PicksSeveralFilesInTheOrderOfTheChoice)
{
    Answers answers({[&](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Select Files");
        auto& tree = folders(dialog);
        auto& list = filesOf(dialog);
        const auto root = tree.model()->index(0, 0);
        EXPECT_EQ(rowsOf(tree, root), QStringList("Parts")); // what may not be read isn't shown
        EXPECT_EQ(rowsOf(list), QStringList());
        EXPECT_FALSE(okOf(dialog).isEnabled());
        tree.setFocus();
        QTest::keyClicks(&tree, "pa");
        EXPECT_EQ(rowsOf(list), QStringList({"a.zenprt", "b.ZENPRT"}));
        find<QComboBox>(dialog, "filter")->setCurrentIndex(1);
        EXPECT_EQ(rowsOf(list), QStringList({"a.zenprt", "b.ZENPRT", "note"}));
        clickRow(list, list.model()->index(2, 0));
        clickRow(list, list.model()->index(0, 0), Qt::ControlModifier);
        okOf(dialog).click();
    }});
    std::vector<Text> paths;
    EXPECT_EQ(object->BrowseForFile(0, 10, u"Select Files", filter, paths), zn::S_OK);
    EXPECT_EQ(paths, (std::vector<Text>{vault.path("Parts/note"), vault.path("Parts/a.zenprt")}));
}

TEST_F(BrowseTest, ACancelledChoiceLeavesTheCallersPathsAlone)
{
    Answers answers({[&](QWidget& dialog) {
        EXPECT_EQ(filesOf(dialog).selectionMode(), QTreeView::SingleSelection);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    }});
    std::vector<Text> paths{u"kept"};
    EXPECT_EQ(object->BrowseForFile(0, 8, u"Select Files", u"", paths), zn::S_FALSE);
    EXPECT_EQ(paths, std::vector<Text>{u"kept"});
    object->setDesktop(nullptr);
    EXPECT_EQ(object->BrowseForFile(0, 8, u"Select Files", u"", paths), zn::E_ARK_NO_DESKTOP);
}

TEST_F(BrowseTest, PicksAFolderThatIsOpenedOnTheWay)
{
    Answers answers({[&](QWidget& dialog) {
        auto& tree = folders(dialog);
        tree.setFocus();
        for (const auto key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Down})
            QTest::keyClick(&tree, key);
        QTest::keyClick(&dialog, Qt::Key_Return);
    }});
    std::shared_ptr<zn::IArkFolder> picked;
    EXPECT_EQ(object->BrowseForFolder(0, u"Please select a folder:", picked), zn::S_OK);
    ASSERT_TRUE(picked);
    Text path;
    picked->GetLocalPath(path);
    EXPECT_EQ(path, vault.path("Parts/Deep"));
}

TEST(FileFilterTest, ShowsNamesByTheirPatterns)
{
    const struct {
        const char16_t* patterns;
        const char16_t* name;
        bool shown;
    } rows[] = {
        {u"*.step; *.stp", u"A.STP", true},
        {u"*.step; *.stp", u"a.step.txt", false},
        {u"*.*", u"without", true},
        {u"a?c*e", u"abcde", true},
        {u"a?c*e", u"abcdf", false},
        {u"*.x_t", u".x_t", true},
        {u"", u"anything", true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(parseFilters(Text(u"Label|") + row.patterns + u"|").front().shows(row.name), row.shown)
            << zn::toUtf8(row.patterns) << " " << zn::toUtf8(row.name);
    EXPECT_EQ(parseFilters(u"One|*.a|Two|*.b").size(), 2U);
    EXPECT_EQ(parseFilters(u"").front().label, u"All files");
}

} // namespace zn::arkin::test
