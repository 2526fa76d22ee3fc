#include "arkin/desktop/pictures/PicturePane.h"
#include "tests/arkin/desktop/DailyFixture.h"
#include "tests/endtoend/Plant.h"

#include <QAction>
#include <QComboBox>
#include <QDesktopServices>
#include <QInputDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>

namespace zn::test {

using zn::arkin::PicturePane;
using zn::arkin::test::chooseEntry;
using zn::arkin::test::chooseRow;
using zn::arkin::test::columnOf;

namespace {

constexpr int patience = 30'000; // milliseconds that a program may take

} // namespace

/// A designer's morning, from a file of his disk to the comparison of its versions, all in one window.
TEST_F(Plant, AFileIsDroppedInFoundConvertedWatchedOpenedAndCompared)
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(folder.path()));
    run("arkin variable add Title");
    run("arkin task create 'For the supplier' --kind convert");
    edit(u"For the supplier", [](QWidget& dialog) {
        turnTo(dialog, "Conversion Settings");
        find<QComboBox>(dialog, "outputFormat")->setCurrentText("STEP (*.step)");
        turnTo(dialog, "Menu Command");
        auto* title = find<QLineEdit>(dialog, "menuTitle");
        title->selectAll();
        type(title, "Send to the supplier");
        pressOk(dialog);
    });
    const auto clip = folder / "Clip.zenprt";
    std::filesystem::copy_file(ZN_SOURCE_DIR "/samples/Bracket.zenprt", clip);
    // What opens files here.
    QTextBrowser opener;
    QDesktopServices::setUrlHandler("file", &opener, "setSource");

    Answers answers({pressOk,
        [](QWidget& dialog) {
            static_cast<QInputDialog&>(dialog).setTextValue("as the supplier has it");
            press(&dialog, Qt::Key_Return);
        },
        [](QWidget& dialog) {
            auto& differences = *find<QTreeView>(dialog, "differences");
            const auto& diff = *find<PicturePane>(dialog, "diff");
            EXPECT_TRUE(QTest::qWaitFor(
                [&] {
                    return !diff.picture().isNull() && columnOf(differences, 1).contains("Volume (Small, Default)");
                },
                patience))
                << columnOf(differences, 1).join("\n").toStdString();
            dialog.close();
        }});
    explore("Models", [&](QWidget& window) {
        auto& list = *find<QTreeView>(window, "files");
        QMimeData dropped;
        dropped.setUrls({QUrl::fromLocalFile(QString::fromStdString(clip.string()))});
        list.model()->dropMimeData(&dropped, Qt::CopyAction, -1, -1, {});
        QCoreApplication::processEvents();
        ASSERT_TRUE(columnOf(list).contains("Clip.zenprt"));

        run("arkin card " + model("Clip.zenprt").string() + " --set 'Title=Holder of hoses'");
        find<QAction>(window, "refresh")->trigger();
        zn::test::type(find<QLineEdit>(window, "search"), "hoses");
        ASSERT_EQ(columnOf(list), QStringList({"Clip.zenprt"}));

        auto& picture = *find<PicturePane>(window, "picture");
        chooseRow(list, "Clip.zenprt");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !picture.picture().isNull(); }, patience));

        chooseEntry(list, "task:For the supplier");
        auto& runs = *find<QTreeView>(window, "runList");
        ASSERT_TRUE(runs.isVisible());
        EXPECT_EQ(columnOf(runs, 2), QStringList({"queued"}));
        run("arkin worker --once");
        EXPECT_TRUE(QTest::qWaitFor([&] { return columnOf(runs, 2) == QStringList({"finished"}); }, patience));
        auto& results = *find<QTreeView>(window, "results");
        ASSERT_EQ(columnOf(results), QStringList({"made", "made", "made"}));
        results.setCurrentIndex(results.model()->index(2, 0));
        QTest::keyClick(&results, Qt::Key_Return);
        EXPECT_EQ(opener.source().fileName(), "Clip_zenprt_Large.step");

        // The large one alone becomes the part.
        find<QTabWidget>(window, "pages")->setCurrentIndex(0);
        chooseRow(list, "Clip.zenprt");
        find<QAction>(window, "checkOut")->trigger();
        run("zentrel import " + model("Clip_zenprt_Large.step").string() + " " + model("Clip.zenprt").string());
        find<QAction>(window, "checkIn")->trigger();
        auto& versions = *find<QTreeView>(window, "versions");
        EXPECT_THAT(columnOf(versions, 4).first().toStdString(), "as the supplier has it");
        chooseRow(versions, columnOf(versions).at(1));
        chooseEntry(versions, "compareVersion");
    });
    QDesktopServices::unsetUrlHandler("file");
    EXPECT_TRUE(answers.allUsed()) << answers.shown().join("\n").toStdString();
}

} // namespace zn::test
