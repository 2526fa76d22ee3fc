#include "arkin/desktop/pictures/PicturePane.h"
#include "tests/arkin/desktop/DailyFixture.h"

#include <QAction>
#include <QCheckBox>
#include <QDropEvent>
#include <QInputDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>

namespace zn::arkin::test {

using ExplorerTest = DailyWindowsTest;

TEST_F(ExplorerTest, FilesAndFoldersGetOtherPlacesAndNames)
{
    const auto answerName = [](const char* name) {
        return [name](QWidget& dialog) {
            static_cast<QInputDialog&>(dialog).setTextValue(name);
            QTest::keyClick(&dialog, Qt::Key_Return);
        };
    };
    const Answers answers(
        {answerName("Screws"), answerName("bolt M8.step"), answerName("Fixings"), [](QWidget& dialog) {
             auto& folders = *find<QTreeWidget>(dialog, "folders");
             folders.setCurrentItem(folders.findItems("Fixings", Qt::MatchRecursive).front());
             QTest::keyClick(&dialog, Qt::Key_Return);
         }});
    inExplorer([&](QWidget& window) {
        auto& folders = *find<QTreeWidget>(window, "folders");
        auto& list = *find<QTreeView>(window, "files");
        chooseEntry(folders, "newFolder", {5, 5});
        EXPECT_EQ(folders.currentItem()->text(0), "Screws");
        EXPECT_EQ(find<QTabWidget>(window, "pages")->tabText(0), "Screws");
        find<QAction>(window, "up")->trigger();
        chooseRow(list, "Bolt.step");
        find<QAction>(window, "rename")->trigger();
        EXPECT_EQ(columnOf(list), QStringList({"arm.zenprt", "bolt M8.step"}));
        folders.setCurrentItem(folders.findItems("Screws", Qt::MatchRecursive).front());
        chooseEntry(folders, "renameFolder", {5, 5});
        EXPECT_EQ(folders.currentItem()->text(0), "Fixings");
        find<QAction>(window, "up")->trigger();
        chooseRow(list, "bolt M8.step");
        find<QAction>(window, "move")->trigger();
        EXPECT_EQ(columnOf(list), QStringList({"arm.zenprt"}));

        // Dragged from the list onto a folder.
        chooseRow(list, "arm.zenprt");
        auto* const fixings = folders.findItems("Fixings", Qt::MatchRecursive).front();
        const std::unique_ptr<QMimeData> dragged(list.model()->mimeData(list.selectionModel()->selectedIndexes()));
        const QPoint at = folders.visualItemRect(fixings).center();
        QDragEnterEvent enter(at, Qt::CopyAction, dragged.get(), Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop(at, Qt::CopyAction, dragged.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(folders.viewport(), &enter);
        QApplication::sendEvent(folders.viewport(), &drop);
        EXPECT_TRUE(drop.isAccepted());
        QApplication::processEvents();
        EXPECT_EQ(columnOf(list), QStringList());
    });
    EXPECT_EQ(vault.vault.file(place("Parts/Fixings/bolt M8.step").fileId).latestVersion, 2);
    EXPECT_TRUE(std::filesystem::exists(vault.local("Parts/Fixings/bolt M8.step")));
}

TEST_F(ExplorerTest, FoldersStandInTabsThatTheNextWindowHas)
{
    inExplorer([&](QWidget& window) {
        auto& tabs = *find<QTabWidget>(window, "pages");
        ASSERT_EQ(tabs.count(), 2);
        find<QToolButton>(window, "moreTabs")->click();
        ASSERT_EQ(tabs.count(), 3);
        EXPECT_EQ(tabs.currentIndex(), 1);
        const auto in = [&](int tab, const char* name) { return tabs.widget(tab)->findChild<QTreeView*>(name); };
        find<QAction>(window, "up")->trigger();
        EXPECT_EQ(tabs.tabText(0), "Parts");
        EXPECT_EQ(tabs.tabText(1), "Test");
        EXPECT_EQ(columnOf(*in(0, "files")), QStringList({"arm.zenprt", "Bolt.step"}));
        EXPECT_EQ(columnOf(*in(1, "files")), QStringList());

        // What is done on one page shows on the other when that is seen.
        tabs.setCurrentIndex(0);
        EXPECT_FALSE(find<QAction>(window, "checkOut")->isEnabled());
        chooseRow(*in(0, "files"), "Bolt.step");
        EXPECT_TRUE(find<QAction>(window, "checkOut")->isEnabled());
        find<QAction>(window, "newTab")->trigger();
        EXPECT_FALSE(find<QAction>(window, "checkOut")->isEnabled());
        ASSERT_EQ(tabs.count(), 4);
        chooseRow(*in(2, "files"), "Bolt.step");
        find<QAction>(window, "checkOut")->trigger();
        tabs.setCurrentIndex(0);
        EXPECT_EQ(columnOf(*in(0, "files"), 3), QStringList({"", "anna on bench"}));
        find<QAction>(window, "closeTab")->trigger();
        EXPECT_EQ(tabs.count(), 3);
        tabs.setCurrentIndex(2);
        find<QAction>(window, "closeTab")->trigger();
        EXPECT_EQ(tabs.count(), 3) << "the runs stay";
    });
    inWindow(
        "explorer", [&] { desktop.showExplorer(host, 0, folder / "cache"); },
        [&](QWidget& window) {
            auto& tabs = *find<QTabWidget>(window, "pages");
            ASSERT_EQ(tabs.count(), 3);
            EXPECT_EQ(tabs.tabText(0) + "|" + tabs.tabText(1), "Test|Parts");
            EXPECT_EQ(tabs.currentIndex(), 0) << "that in front before the runs";
            const auto closes = [&] {
                for (const auto side : {QTabBar::LeftSide, QTabBar::RightSide})
                    if (const QWidget* const button = tabs.tabBar()->tabButton(0, side))
                        return button->isVisible();
                return false;
            };
            EXPECT_TRUE(closes());
            tabs.tabCloseRequested(0);
            EXPECT_EQ(tabs.count(), 2);
            EXPECT_FALSE(closes()) << "one folder stays";
        });
}

TEST_F(ExplorerTest, TheSearchReachesAllFolders)
{
    vault.addReleased("Ahead.zenprt", "another");
    inExplorer([&](QWidget& window) {
        auto& list = *find<QTreeView>(window, "files");
        auto& search = *find<QLineEdit>(window, "search");
        search.setText("step");
        EXPECT_EQ(columnOf(list), QStringList({"Bolt.step"}));
        find<QCheckBox>(window, "everywhere")->setChecked(true);
        EXPECT_EQ(columnOf(list), QStringList({"Bolt.step", "c.step"}));
        EXPECT_EQ(columnOf(list, 6), QStringList({"\\Parts", "\\Parts\\Deep"}));
        search.setText("zenprt");
        EXPECT_EQ(columnOf(list), QStringList({"Ahead.zenprt", "arm.zenprt"})) << "by name, though it came last";
        search.setText("step");
        EXPECT_EQ(list.model()->headerData(6, Qt::Horizontal).toString(), "Folder");
        search.setText("step schraube");
        EXPECT_EQ(columnOf(list), QStringList({"Bolt.step"}));
        // What is found can be worked on, and stays in sight.
        search.setText("c.st");
        chooseRow(list, "c.step");
        find<QAction>(window, "checkOut")->trigger();
        EXPECT_EQ(columnOf(list, 3), QStringList({"anna on bench"}));
        find<QCheckBox>(window, "everywhere")->setChecked(false);
        EXPECT_EQ(columnOf(list), QStringList());
        search.clear();
        EXPECT_EQ(columnOf(list), QStringList({"arm.zenprt", "Bolt.step"}));
        find<QCheckBox>(window, "everywhere")->setChecked(true);
        search.setText("arm");
        find<QAction>(window, "up")->trigger();
        EXPECT_EQ(search.text(), "") << "the folder is wanted";
        EXPECT_EQ(columnOf(list), QStringList({"Ahead.zenprt"}));
    });
    EXPECT_TRUE(vault.vault.files().checkOut(place("Parts/Deep/c.step").fileId));
}

/// Which part of the picture the model covers.
double coverage(const QImage& picture)
{
    double covered = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            covered += picture.pixelColor(x, y).alpha() > 127;
    return covered / picture.width() / picture.height();
}

TEST_F(ExplorerTest, AModelIsTurnedByMouseAndKeys)
{
    vault.addReleased("Parts/Bracket.zenprt", readFile(ZN_SOURCE_DIR "/samples/Bracket.zenprt"));
    zn::Registry& settings = registry;
    settings.write(RegistryRoot::Machine, u"SOFTWARE\\Arkin\\Pictures", u".zenprt",
        RegistryValue::text(files.fromMachine(ZN_BIN_DIR "/zentrel")));
    inExplorer([&](QWidget& window) {
        auto& pane = *find<PicturePane>(window, "picture");
        pane.setFixedSize(300, 300);
        chooseRow(*find<QTreeView>(window, "files"), "Bracket.zenprt");
        ASSERT_TRUE(QTest::qWaitFor([&] { return !pane.picture().isNull(); }, 20'000));
        const QImage still = pane.picture();
        QTest::keyClick(&pane, Qt::Key_Right);
        EXPECT_EQ(pane.picture(), still) << "not before the model is here";
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QApplication::sendEvent(&pane, &enter);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !pane.toolTip().isEmpty(); }, 20'000));

        QTest::keyClick(&pane, Qt::Key_Right);
        const QImage aside = pane.picture();
        EXPECT_EQ(aside.size(), QSize(300, 300));
        QTest::keyClick(&pane, Qt::Key_Left);
        EXPECT_NEAR(coverage(pane.picture()), coverage(still), 0.01) << "as the picture was made";
        const auto firstLook = coverage(pane.picture());
        QTest::keyClick(&pane, Qt::Key_Plus);
        EXPECT_GT(coverage(pane.picture()), 1.2 * firstLook);
        QTest::keyClick(&pane, Qt::Key_Home);
        EXPECT_EQ(pane.picture(), still);
        // A quarter of a drag from edge to edge is four steps of a key.
        QTest::mousePress(&pane, Qt::LeftButton, {}, {100, 100});
        QMouseEvent drag(
            QEvent::MouseMove, QPointF(118.75, 100), QPointF(118.75, 100), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&pane, &drag);
        QTest::mouseRelease(&pane, Qt::LeftButton, {}, {118, 100});
        EXPECT_NEAR(coverage(pane.picture()), coverage(aside), 0.002);
        QTest::mouseDClick(&pane, Qt::LeftButton);
        EXPECT_EQ(pane.picture(), still);
    });
}

TEST_F(ExplorerTest, TwoVersionsOfAModelAreComparedByTheirMeasures)
{
    // The program tells what stands in the file.
    const std::string measurer = folder / "measurer";
    writeFile(measurer, "#!/bin/sh\ncase \"$3\" in *.json) cat \"$2\" > \"$3\";; *) exit 1;; esac\n");
    std::filesystem::permissions(measurer, std::filesystem::perms::owner_all);
    zn::Registry& settings = registry;
    settings.write(RegistryRoot::Machine, u"SOFTWARE\\Arkin\\Pictures", u".zenprt",
        RegistryValue::text(files.fromMachine(measurer)));
    const auto measures = [](const char* volume, const char* bodies) {
        return std::string(R"({"configurations":[{"name":"Default","area":600,"size":[10,10,10],"volume":)") + volume
            + R"(,"bodyNames":[)" + bodies + "]}]}";
    };
    const auto arm = place("Parts/arm.zenprt");
    vault.change(arm, "Parts/arm.zenprt", measures("1000", R"({"name":"Box","count":1})"));
    vault.change(arm, "Parts/arm.zenprt", measures("1000.5", R"({"name":"Box","count":2},{"name":"Bolt","count":1})"));
    Answers answers({[](QWidget& dialog) {
        auto& list = *find<QTreeView>(dialog, "differences");
        ASSERT_TRUE(QTest::qWaitFor([&] { return list.model()->rowCount() == 4; })) << list.model()->rowCount();
        EXPECT_EQ(columnOf(list, 1), QStringList({"", "Volume", "Bolt", "Box"}));
        EXPECT_EQ(columnOf(list, 2).sliced(1), QStringList({"1,000 mm³", "", "1"}));
        EXPECT_EQ(columnOf(list, 3).sliced(1), QStringList({"1,000.5 mm³", "1", "2"}));
        dialog.close();
    }});
    inExplorer([&](QWidget& window) {
        chooseRow(*find<QTreeView>(window, "files"), "arm.zenprt");
        auto& versions = *find<QTreeView>(window, "versions");
        chooseRow(versions, "2");
        chooseEntry(versions, "compareVersion");
    });
}

TEST(TurningModel, RefusesWhatIsNoSuchModel)
{
    const std::string header = "ply\nformat binary_little_endian 1.0\nelement vertex ";
    const std::string rest
        = "\nproperty float x\nproperty float y\nproperty float z\nproperty float nx\nproperty float ny\n"
          "property float nz\nproperty uchar red\nproperty uchar green\nproperty uchar blue\nelement face 0\n"
          "property list uchar int vertex_indices\nend_header\n";
    for (const std::string& ply :
        {std::string(), std::string("ply\n"), header + "x", header + "3" + rest, header + "0" + rest,
            header + "2" + rest + std::string(54, 'x'), header + "18446744073709551615" + rest + std::string(81, 'x')})
        EXPECT_THROW(TurningModel{ply}, zn::StatusError) << ply;
    EXPECT_NO_THROW(TurningModel(header + "3" + rest + std::string(81, 'x')));
}

} // namespace zn::arkin::test
