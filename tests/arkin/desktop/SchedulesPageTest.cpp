#include "arkin/desktop/monitor/RunsView.h"
#include "arkin/desktop/monitor/ScheduleTexts.h"
#include "arkin/tasks/ScheduleStore.h"
#include "tests/arkin/desktop/DesktopFixture.h"

#include <QAction>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTimeEdit>
#include <QTreeView>
#include <QTreeWidget>

namespace zn::arkin::test {

class SchedulesPageTest : public DesktopFixture {
protected:
    SchedulesPageTest()
    {
        qputenv("TZ", "UTC");
        host.opened = &vault.vault;
        object->setDesktop(&desktop);
        for (const auto* name : {"Parts/arm.zenprt", "Parts/Bolt.step"})
            vault.addReleased(name, name);
        define();
    }
    static QPushButton& okOf(QWidget& dialog)
    {
        return *find<QDialogButtonBox>(dialog, "buttons")->button(QDialogButtonBox::Ok);
    }

    HostDesktop desktop{{"offscreen", {}}, true};
    ScheduleStore schedules{vault.store.database(), host.vaultId};
};

TEST_F(SchedulesPageTest, OneIsMadeShownAndRemoved)
{
    const DailyHost daily{host, {}, {}, {}};
    RunsView view(daily);
    view.show();
    find<QTabWidget>(view, "monitorTabs")->setCurrentIndex(2);
    const auto& list = *find<QTreeWidget>(view, "schedules");
    EXPECT_EQ(list.topLevelItemCount(), 0);
    EXPECT_FALSE(find<QAction>(view, "removeSchedule")->isEnabled());

    const auto fill = [](QWidget& dialog) {
        EXPECT_FALSE(okOf(dialog).isEnabled()) << "nothing to launch it on";
        find<QPushButton>(dialog, "addFiles")->click();
        find<QPushButton>(dialog, "addFolder")->click();
        auto& items = *find<QListWidget>(dialog, "items");
        ASSERT_EQ(items.count(), 3);
        items.item(0)->setSelected(true);
        find<QPushButton>(dialog, "removeItems")->click();
        find<QTimeEdit>(dialog, "time")->setTime({5, 7});
        for (const int day : {0, 2, 3, 4, 5, 6})
            find<QCheckBox>(dialog, QString("day%1").arg(day).toLatin1())->click();
        find<QCheckBox>(dialog, "day1")->click();
        EXPECT_FALSE(okOf(dialog).isEnabled()) << "no day";
        find<QCheckBox>(dialog, "day1")->click();
        find<QCheckBox>(dialog, "day4")->click();
        find<QLineEdit>(dialog, "zone")->setText("Moon");
        okOf(dialog).click();
        EXPECT_TRUE(dialog.isVisible());
        find<QLineEdit>(dialog, "zone")->setText("Asia/Tokyo");
        find<QCheckBox>(dialog, "onlyChanged")->click();
        okOf(dialog).click();
    };
    const auto pick = [](QWidget& browser) {
        auto& folders = *find<QTreeView>(browser, "folders");
        QTest::keyClicks(&folders, "pa");
        if (auto* shownFiles = browser.findChild<QTreeView*>("files"))
            shownFiles->selectAll();
        QTest::keyClick(&browser, Qt::Key_Return);
    };
    {
        Answers answers({fill, pick, pick, [](QWidget& box) { static_cast<QMessageBox&>(box).accept(); }});
        find<QAction>(view, "addSchedule")->trigger();
        EXPECT_THAT(answers.shown().join(' ').toStdString(), ::testing::HasSubstr("knows no time zone 'Moon'"));
    }
    const auto stored = schedules.list();
    ASSERT_EQ(stored.size(), 1U);
    EXPECT_EQ(stored[0].time, (ScheduleTime{5 * 60 + 7, 0b10010, "Asia/Tokyo"}));
    EXPECT_TRUE(stored[0].onlyChanged);
    EXPECT_EQ(stored[0].userName, u"anna");
    ASSERT_EQ(stored[0].items.size(), 2U);
    EXPECT_EQ(stored[0].items[0].fileId, vault.vault.find(vault.path("Parts/Bolt.step"))->fileId);
    EXPECT_EQ(stored[0].items[1].folderId, *vault.vault.findFolder(vault.path("Parts")));
    EXPECT_EQ(stored[0].nextAt, nextTime(stored[0].time, vault.clock.now()));

    ASSERT_EQ(list.topLevelItemCount(), 1);
    EXPECT_EQ(list.topLevelItem(0)->text(1), "Mon, Thu 05:07 (Asia/Tokyo), only what changed");
    list.topLevelItem(0)->setSelected(true);
    const Answers answers{QMessageBox::No, QMessageBox::Yes};
    find<QAction>(view, "removeSchedule")->trigger();
    EXPECT_EQ(list.topLevelItemCount(), 1);
    find<QAction>(view, "removeSchedule")->trigger();
    EXPECT_EQ(list.topLevelItemCount(), 0);
    EXPECT_TRUE(schedules.list().empty());
}

TEST_F(SchedulesPageTest, WhatCameOfTheLastTimeIsTold)
{
    Schedule schedule;
    schedule.taskName = u"Nightly";
    schedule.time = {22 * 60, ScheduleTime::everyDay, "UTC"};
    schedule.nextAt = 1'000;
    schedule.items = {{0, 1, vault.path("Parts"), {}, zn::ArkItemType::Folder, -1}};
    schedule.id = schedules.add(schedule);
    RunStore(vault.store.database(), host.vaultId).enqueue(stored(), {newGuid(), u"anna", {}, {}}, 1);
    {
        Transaction writing(vault.store.database());
        ASSERT_TRUE(schedules.settle(schedule, {1'100, 2'000, 1, "It was left out."}));
        writing.commit();
    }
    const DailyHost daily{host, {}, {}, {}};
    RunsView view(daily);
    view.show();
    auto& tabs = *find<QTabWidget>(view, "monitorTabs");
    tabs.setCurrentIndex(2);
    auto& list = *find<QTreeWidget>(view, "schedules");
    ASSERT_EQ(list.topLevelItemCount(), 1);
    EXPECT_EQ(list.topLevelItem(0)->text(1), "daily 22:00 (UTC)");
    EXPECT_EQ(list.topLevelItem(0)->text(4), "1");
    EXPECT_EQ(list.topLevelItem(0)->text(6).toStdString(), vault.local("Parts").string());
    EXPECT_EQ(list.topLevelItem(0)->text(7), "It was left out.");
    list.itemActivated(list.topLevelItem(0), 0);
    EXPECT_EQ(tabs.currentIndex(), 0);
    EXPECT_TRUE(find<QTreeView>(view, "runList")->currentIndex().isValid());
    tasks.remove(stored().id);
    tabs.setCurrentIndex(2);
    EXPECT_EQ(list.topLevelItem(0)->text(7), "The task is deleted.");
}

} // namespace zn::arkin::test
