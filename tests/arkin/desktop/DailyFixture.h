#pragma once

#include "tests/arkin/desktop/DesktopFixture.h"

#include <QMenu>
#include <QSettings>
#include <QTreeView>

namespace zn::arkin::test {

inline QStringList columnOf(const QTreeView& list, int column = 0)
{
    QStringList texts;
    for (int row = 0; row < list.model()->rowCount(); ++row)
        texts << list.model()->index(row, column).data().toString();
    return texts;
}

inline void chooseRow(QTreeView& list, const QString& name)
{
    const qsizetype row = columnOf(list).indexOf(name);
    ASSERT_GE(row, 0) << name.toStdString();
    list.setCurrentIndex(list.model()->index(static_cast<int>(row), 0));
}

/// Opens the menu there and chooses the entry.
inline void chooseEntry(QWidget& place, const QString& entry, const QPoint& at)
{
    QTimer::singleShot(0, [&] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        for (QAction* action : menu->actions())
            if (action->objectName() == entry)
                menu->setActiveAction(action);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    place.customContextMenuRequested(at);
}

/// At the chosen row.
inline void chooseEntry(QTreeView& list, const QString& entry)
{
    chooseEntry(list, entry, list.visualRect(list.currentIndex()).center());
}

/// The windows of daily work over a vault with a folder "Parts" of two files, one with a card.
class DailyWindowsTest : public DesktopFixture {
protected:
    DailyWindowsTest()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(folder.path()));
        host.opened = &vault.vault;
        title = vault.vault.cards().addVariable(u"Title");
        for (const auto* name : {"Parts/arm.zenprt", "Parts/Bolt.step", "Parts/Deep/c.step"})
            vault.addReleased(name, name);
        const Place bolt = place("Parts/Bolt.step");
        checkOut(vault.vault, bolt);
        const CardWrite write{bolt.fileId, title, u"@", zn::Value(u"Sechskantschraube M8")};
        writeCards(vault.vault, {&write, 1});
        vault.checkInAll({bolt});
    }
    Place place(const char* path) { return *vault.vault.find(vault.path(path)); }
    RunStore runs() { return {vault.store.database(), host.vaultId}; }

    /// Does it in the shown window, and closes that.
    template <class Work> void inWindow(const char* name, const std::function<void()>& show, Work&& work)
    {
        bool done = false;
        QTimer::singleShot(0, [&] {
            for (QWidget* window : QApplication::topLevelWidgets())
                if (window->objectName() == name) {
                    work(*window);
                    done = true;
                    window->close();
                }
        });
        show();
        EXPECT_TRUE(done);
    }
    template <class Work> void inExplorer(Work&& work)
    {
        inWindow(
            "explorer",
            [&] { desktop.showExplorer(host, *vault.vault.findFolder(vault.path("Parts")), folder / "cache"); }, work);
    }

    std::int32_t title = 0;
    HostDesktop desktop{{"offscreen", {}}, true};
};

} // namespace zn::arkin::test
