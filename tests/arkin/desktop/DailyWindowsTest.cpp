#include "arkin/desktop/monitor/RunTexts.h"
#include "arkin/desktop/pictures/PicturePane.h"
#include "arkin/tasks/RunClaim.h"
#include "tests/arkin/desktop/DailyFixture.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeView>
#include <QTreeWidget>
#include <soci/soci.h>

namespace zn::arkin::test {

TEST_F(DailyWindowsTest, FilesAreFoundByNameAndCardAndWorkedOn)
{
    const Answers answers({[](QWidget& dialog) {
        static_cast<QInputDialog&>(dialog).setTextValue("longer thread");
        QTest::keyClick(&dialog, Qt::Key_Return);
    }});
    inExplorer([&](QWidget& window) {
        auto& list = *find<QTreeView>(window, "files");
        EXPECT_EQ(columnOf(list), QStringList({"arm.zenprt", "Bolt.step"}));
        auto& search = *find<QLineEdit>(window, "search");
        zn::test::type(&search, "SCHRAUBE m8");
        EXPECT_EQ(columnOf(list), QStringList({"Bolt.step"}));
        search.setText("bolt nothing");
        EXPECT_EQ(columnOf(list), QStringList());
        search.clear();
        EXPECT_FALSE(find<QAction>(window, "checkOut")->isEnabled());
        chooseRow(list, "Bolt.step");
        find<QAction>(window, "checkOut")->trigger();
        EXPECT_EQ(columnOf(list, 3), QStringList({"", "anna on bench"}));
        auto& filter = *find<QComboBox>(window, "filter");
        filter.setCurrentText("Checked out by me");
        EXPECT_EQ(columnOf(list), QStringList({"Bolt.step"}));
        filter.setCurrentText("Changed here");
        EXPECT_EQ(columnOf(list), QStringList());
        writeFile(vault.local("Parts/Bolt.step"), "longer");
        find<QAction>(window, "refresh")->trigger();
        EXPECT_EQ(columnOf(list), QStringList({"Bolt.step"}));
        chooseRow(list, "Bolt.step");
        find<QAction>(window, "checkIn")->trigger();
        filter.setCurrentIndex(0);
        EXPECT_EQ(columnOf(list, 1), QStringList({"1", "3"}));
        chooseRow(list, "Bolt.step");
        EXPECT_EQ(columnOf(*find<QTreeView>(window, "versions"), 4), QStringList({"longer thread", "done", "done"}));
        find<QTabWidget>(window, "fileDetails")->setCurrentIndex(1);
        EXPECT_EQ(columnOf(*find<QTreeView>(window, "card"), 2), QStringList({"Sechskantschraube M8"}));
        chooseEntry(*list.header(), "column:Title", {5, 5});
        EXPECT_EQ(columnOf(list, 6), QStringList({"", "Sechskantschraube M8"}));
        find<QAction>(window, "up")->trigger();
        EXPECT_EQ(columnOf(list), QStringList());
        EXPECT_FALSE(find<QAction>(window, "forward")->isEnabled());
        find<QAction>(window, "back")->trigger();
        EXPECT_TRUE(find<QAction>(window, "forward")->isEnabled());
        chooseRow(list, "Bolt.step");
        chooseEntry(list, "copyPath");
        EXPECT_EQ(QApplication::clipboard()->text().toStdString(), vault.local("Parts/Bolt.step").string());
    });
    EXPECT_EQ(vault.vault.files().history(place("Parts/Bolt.step").fileId).back().comment, u"longer thread");
}

TEST_F(DailyWindowsTest, AnOlderVersionIsBroughtAndMadeTheNewest)
{
    Answers answers({QMessageBox::Yes});
    vault.change(place("Parts/Bolt.step"), "Parts/Bolt.step", "longer");
    inExplorer([&](QWidget& window) {
        chooseRow(*find<QTreeView>(window, "files"), "Bolt.step");
        auto& versions = *find<QTreeView>(window, "versions");
        chooseRow(versions, "1");
        chooseEntry(versions, "getVersion");
        EXPECT_EQ(readFile(vault.local("Parts/Bolt.step")), "Parts/Bolt.step");
        chooseEntry(versions, "restoreVersion");
        EXPECT_EQ(columnOf(versions, 4).first(), "Version 1 restored");
    });
    EXPECT_EQ(vault.vault.file(place("Parts/Bolt.step").fileId).latestVersion, 4);
}

TEST_F(DailyWindowsTest, TwoVersionsAreComparedByPicturesAndCards)
{
    const auto png = [this](QColor color, int width) {
        QImage image(100, 100, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < width; ++x)
                image.setPixelColor(x, y, y < 50 ? QColor(Qt::blue) : color);
        image.save(QString::fromStdString(folder / "drawn.png"));
        return readFile(folder / "drawn.png");
    };
    const Place picture = vault.addReleased("Parts/plan.png", png(Qt::black, 40));
    vault.change(picture, "Parts/plan.png", png(Qt::gray, 80));
    Answers answers({[](QWidget& dialog) {
        const QImage& diff = find<PicturePane>(dialog, "diff")->picture();
        ASSERT_EQ(diff.size(), QSize(512, 512));
        const auto at = [&](int x, int y) { return diff.pixelColor(x * 512 / 100, y * 512 / 100); };
        EXPECT_EQ(at(90, 20).alpha(), 0);
        EXPECT_EQ(at(60, 20), QColor(30, 140, 60)) << "only after";
        EXPECT_EQ(at(20, 80), QColor(225, 150, 20)) << "otherwise";
        EXPECT_EQ(at(20, 20).red(), at(20, 20).green()) << "the same";
        const auto& list = *find<QTreeView>(dialog, "differences");
        EXPECT_EQ(columnOf(list), QStringList({"Content"}));
        dialog.close();
    }});
    inExplorer([&](QWidget& window) {
        chooseRow(*find<QTreeView>(window, "files"), "plan.png");
        auto& versions = *find<QTreeView>(window, "versions");
        chooseRow(versions, "1");
        chooseEntry(versions, "compareVersion");
    });
}

TEST_F(DailyWindowsTest, DeletingAsksFirstAndFailuresNameTheirFiles)
{
    const auto press = [](QMessageBox::StandardButton button) {
        return [button](QWidget& box) { static_cast<QMessageBox&>(box).button(button)->click(); };
    };
    Answers answers({press(QMessageBox::No), press(QMessageBox::Yes), press(QMessageBox::Ok), [](QWidget& dialog) {
                         find<QTreeWidget>(dialog, "deleted")->selectAll();
                         find<QPushButton>(dialog, "restore")->click();
                     }});
    Vault other(vault.store, vault.vault.info(), {"ben", "desk"});
    checkOut(other, place("Parts/arm.zenprt"));
    inExplorer([&](QWidget& window) {
        auto& list = *find<QTreeView>(window, "files");
        list.selectAll();
        find<QAction>(window, "delete")->trigger();
        EXPECT_EQ(columnOf(list).size(), 2);
        list.selectAll();
        find<QAction>(window, "delete")->trigger();
        EXPECT_EQ(columnOf(list), QStringList({"arm.zenprt"}));
        chooseEntry(*find<QTreeView>(window, "folders"), "deletedFiles");
        EXPECT_EQ(columnOf(list), QStringList({"arm.zenprt", "Bolt.step"}));
    });
    EXPECT_EQ(
        answers.shown()[1].toStdString(), "Delete 2 files? Their versions stay, and “Deleted Files” brings them back.");
    EXPECT_THAT(answers.shown()[2].toStdString(), ::testing::HasSubstr("arm.zenprt"));
}

TEST_F(DailyWindowsTest, ATasksMenuEntryLaunchesItOnTheChosenFileAndShowsTheRun)
{
    const auto task = define({{u"Plan", Value(u"")}});
    tasks.change(task.id, {{}, {{{1, u"&Convert", u"Makes a neutral file", 0x4001}}}, u"anna", 1});
    inExplorer([&](QWidget& window) {
        auto& list = *find<QTreeView>(window, "files");
        chooseRow(list, "arm.zenprt");
        chooseEntry(list, "task:Nightly");
        auto& shownRuns = *find<QTreeView>(window, "runList");
        EXPECT_TRUE(shownRuns.isVisible());
        EXPECT_EQ(columnOf(shownRuns, 1), QStringList({"Nightly"}));
        EXPECT_EQ(columnOf(shownRuns, 2), QStringList({"queued"}));
        find<QAction>(window, "cancel")->trigger();
        EXPECT_EQ(columnOf(shownRuns, 2), QStringList({"cancelled"}));
        EXPECT_FALSE(find<QAction>(window, "cancel")->isEnabled());
        find<QTabWidget>(window, "runTabs")->setCurrentIndex(3);
        EXPECT_THAT(find<QLabel>(window, "facts")->text().toStdString(), ::testing::HasSubstr(" by anna on "));
        EXPECT_TRUE(columnOf(*find<QTreeView>(window, "settings")).contains("Plan"));
        find<QAction>(window, "again")->trigger();
        EXPECT_EQ(columnOf(shownRuns, 2), QStringList({"queued", "cancelled"}));
        chooseEntry(*find<QTreeView>(window, "folders"), "task:Nightly");
    });
    EXPECT_EQ(runs().selection(2).at(0).path, vault.path("Parts/arm.zenprt"));
    const auto folderSelection = runs().selection(3);
    ASSERT_EQ(folderSelection.size(), 1U);
    EXPECT_EQ(folderSelection[0].itemType, zn::ArkItemType::Folder);
    EXPECT_EQ(folderSelection[0].path, vault.path("Parts"));
    const auto selection = runs().selection(1);
    ASSERT_EQ(selection.size(), 1U);
    EXPECT_EQ(selection[0].fileId, place("Parts/arm.zenprt").fileId);
    EXPECT_EQ(selection[0].path, vault.path("Parts/arm.zenprt"));
    EXPECT_EQ(selection[0].version, -1);
}

TEST_F(DailyWindowsTest, FilesAreDroppedInAndDraggedOut)
{
    const auto outside = folder / "outside";
    writeFile(outside / "arm.zenprt", "another arm");
    writeFile(outside / "Sub/nut.step", "nut");
    Answers answers({[](QWidget& box) { find<QPushButton>(box, "newVersions")->click(); },
        [](QWidget& box) { static_cast<QMessageBox&>(box).accept(); }});
    inExplorer([&](QWidget& window) {
        auto& list = *find<QTreeView>(window, "files");
        const auto drop = [&](const std::filesystem::path& path) {
            QMimeData data;
            data.setUrls({QUrl::fromLocalFile(QString::fromStdString(path.string()))});
            list.model()->dropMimeData(&data, Qt::CopyAction, -1, -1, {});
            QCoreApplication::processEvents();
        };
        drop(outside / "Sub");
        EXPECT_TRUE(vault.vault.find(vault.path("Parts/Sub/nut.step")));
        drop(outside / "arm.zenprt");
        EXPECT_EQ(columnOf(list, 1), QStringList({"2", "2"}));
        std::filesystem::remove(vault.local("Parts/arm.zenprt"));
        const std::unique_ptr<QMimeData> dragged(list.model()->mimeData({list.model()->index(0, 0)}));
        EXPECT_EQ(readFile(dragged->urls().at(0).toLocalFile().toStdString()), "another arm");
        drop(vault.local("Parts/arm.zenprt"));
        EXPECT_EQ(columnOf(list, 1), QStringList({"2", "2"}));
    });
    EXPECT_THAT(answers.shown().back().toStdString(), ::testing::HasSubstr("lies in the vault's folder already"));
}

TEST_F(DailyWindowsTest, CardValuesAreWrittenWhileTheFileIsCheckedOut)
{
    const Place arm = place("Parts/arm.zenprt");
    inExplorer([&](QWidget& window) {
        auto& list = *find<QTreeView>(window, "files");
        auto& card = *find<QTreeWidget>(window, "card");
        find<QTabWidget>(window, "fileDetails")->setCurrentIndex(1);
        chooseRow(list, "Bolt.step");
        EXPECT_FALSE(card.topLevelItem(0)->flags() & Qt::ItemIsEditable);
        chooseRow(list, "arm.zenprt");
        EXPECT_EQ(card.topLevelItemCount(), 0);
        find<QAction>(window, "checkOut")->trigger();
        ASSERT_EQ(columnOf(card), QStringList({"Title"}));
        card.setCurrentItem(card.topLevelItem(0));
        card.itemActivated(card.currentItem(), 0);
        QTest::keyClicks(card.viewport()->focusWidget(), "Swivel arm");
        QTest::keyClick(card.viewport()->focusWidget(), Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&] { return vault.vault.cards().value(arm.fileId, 2, title, u"@").has_value(); }));
        EXPECT_TRUE(QTest::qWaitFor([&] { return columnOf(card, 2) == QStringList({"Swivel arm"}); }));
    });
    EXPECT_FALSE(vault.vault.cards().value(arm.fileId, 1, title, u"@"));
    vault.checkInAll({arm});
    EXPECT_EQ(vault.vault.cards().value(arm.fileId, 2, title, u"@"), zn::Value(u"Swivel arm"));
}

TEST_F(DailyWindowsTest, PicturesComeFromImagesProgramsAndTheCache)
{
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    const std::string png = folder / "red.png";
    image.save(QString::fromStdString(png));
    vault.addReleased("Parts/red.png", readFile(png));
    vault.addReferring("Parts/whole.zenasm", {place("Parts/arm.zenprt")});
    // Draws what lies beside the file: the picture shows that what it refers to is there.
    const std::string painter = folder / "painter";
    writeFile(painter,
        "#!/bin/sh\ntest \"$1 $4 $5\" = 'picture --size 512' || exit 1\nls \"${2%/*}\" > " + (folder / "seen").string()
            + "\ncp " + png + " \"$3\"\n");
    std::filesystem::permissions(painter, std::filesystem::perms::owner_all);
    zn::Registry& settings = registry;
    for (const auto& [extension, program] :
        {std::pair(u".zenasm", painter), std::pair(u".step", std::string("/bin/false"))})
        settings.write(RegistryRoot::Machine, u"SOFTWARE\\Arkin\\Pictures", extension,
            RegistryValue::text(files.fromMachine(program)));
    inExplorer([&](QWidget& window) {
        auto& list = *find<QTreeView>(window, "files");
        auto& pane = *find<PicturePane>(window, "picture");
        chooseRow(list, "red.png");
        EXPECT_EQ(pane.picture().size(), QSize(512, 256));
        EXPECT_EQ(pane.picture().pixelColor(100, 100), QColor(Qt::red));
        chooseRow(list, "arm.zenprt");
        EXPECT_EQ(pane.sentence(), "There are no pictures of files of this kind.");
        chooseRow(list, "Bolt.step");
        EXPECT_TRUE(QTest::qWaitFor([&] { return pane.sentence() == "No picture could be made of this file."; }));
        chooseRow(list, "whole.zenasm");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !pane.picture().isNull(); }));
        EXPECT_EQ(readFile(folder / "seen"), "arm.zenprt\nwhole.zenasm\n");
        std::filesystem::remove(folder / "seen");
        chooseRow(list, "red.png");
        chooseRow(list, "whole.zenasm");
        EXPECT_FALSE(pane.picture().isNull()) << "kept";
    });
    EXPECT_FALSE(std::filesystem::exists(folder / "seen"));
}

TEST_F(DailyWindowsTest, TheMonitorFollowsRunsAndTellsWhatTheyDid)
{
    const auto task = define();
    for (const char16_t* user : {u"anna", u"ben"})
        runs().enqueue(task, {newGuid(), user, {}, {}}, vault.clock.now());
    auto& session = vault.store.database().session();
    inWindow(
        "monitor", [&] { desktop.showMonitor(host, 1, folder / "cache"); },
        [&](QWidget& window) {
            auto& list = *find<QTreeView>(window, "runList");
            EXPECT_EQ(columnOf(list, 4), QStringList({"ben", "anna"}));
            {
                Transaction writing(vault.store.database()); // as a worker elsewhere does
                session << "UPDATE task_runs SET state = 7, ended_at = 1, outputs_expected = 2, outputs_missing = 1, "
                           "result_text = 'Errors.' WHERE id = 1";
                session << "INSERT INTO task_run_results VALUES (1, 0, 'Z:\\v\\a.step', 1, 1, 'Stand', 'Z:\\v\\a.stl', "
                           "2, 3, "
                           "1, '', 1500), (1, 1, 'Z:\\v\\b.step', 2, 1, '', '', 0, 0, 5, 'It is damaged.', 20)";
                session << "UPDATE task_runs SET ended_at = 9999999999 WHERE id = 1";
                writing.commit();
            }
            EXPECT_TRUE(QTest::qWaitFor([&] { return columnOf(list, 2)[1] == "finished, 1 of 2 failed"; }));
            EXPECT_EQ(find<QLabel>(window, "heading")->text(), "finished, 1 of 2 failed: Errors.");
            const auto& results = *find<QTreeView>(window, "results");
            EXPECT_EQ(columnOf(results), QStringList({"made", "failed"}));
            EXPECT_EQ(columnOf(results, 1), QStringList({"a.step (Stand)", "b.step"}));
            EXPECT_EQ(columnOf(results, 2), QStringList({"Z:/v/a.stl", ""}));
            EXPECT_EQ(columnOf(results, 3), QStringList({"3", ""}));
            EXPECT_EQ(columnOf(results, 5), QStringList({"", "It is damaged."}));
            EXPECT_EQ(runs().versionsWithOutputs(u"Nightly"), (std::unordered_map<std::int32_t, std::int32_t>{{1, 1}}));
            const auto made = runs().runsOf(2);
            ASSERT_EQ(made.size(), 2U);
            EXPECT_TRUE(made[0].isOutput && made[0].outcome == FileOutcome::Made);
            EXPECT_TRUE(!made[1].isOutput && made[1].outcome == FileOutcome::Failed);
            find<QComboBox>(window, "kind")->setCurrentIndex(1); // not ended
            EXPECT_EQ(columnOf(list, 4), QStringList({"ben"}));
            find<QComboBox>(window, "user")->setCurrentIndex(1); // mine
            EXPECT_EQ(columnOf(list), QStringList());
            find<QComboBox>(window, "kind")->setCurrentIndex(2); // with failures
            EXPECT_EQ(columnOf(list), QStringList({"1"}));
        });
}

TEST(RunTextsTest, TimesAreToldAsPeopleWantThem)
{
    const struct {
        TaskRunState state;
        std::int64_t started, ended;
        std::int32_t position, total;
        const char* text;
    } rows[] = {
        {TaskRunState::Queued, 0, 0, 0, 0, ""},
        {TaskRunState::Running, 1000, 0, 0, 40, "1 min 40 s"},
        {TaskRunState::Running, 1000, 0, 10, 40, "1 min 40 s, about 5 min 00 s left"},
        {TaskRunState::Suspended, 1000, 0, 10, 40, "1 min 40 s"},
        {TaskRunState::Finished, 1000, 4723, 40, 40, "1 h 02 min"},
        {TaskRunState::Finished, 1000, 1000, 40, 40, "0 s"},
    };
    for (const auto& row : rows) {
        RunInfo run;
        run.state = row.state;
        run.startedAt = row.started;
        run.endedAt = row.ended;
        run.progressPosition = row.position;
        run.progressTotal = row.total;
        EXPECT_EQ(workTimeText(run, 1100), row.text);
    }
}

} // namespace zn::arkin::test
