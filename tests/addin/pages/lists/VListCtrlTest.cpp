#include "addin/pages/lists/VListCtrl.h"

#include "addin/pages/lists/IconCache.h"

#include <gtest/gtest.h>
#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QTest>
#include <QTimer>

using namespace zn;

namespace {

class Row : public VListCtrlItem {
public:
    Row(QString name, QString version)
        : m_name(std::move(name))
        , m_version(std::move(version))
    {
        ++alive;
    }
    ~Row() override { --alive; }

    QString text(int column) const override
    {
        ++textsAsked;
        return column == 0 ? m_name : m_version;
    }
    int image(int column) const override
    {
        ++imagesAsked;
        return column == 0 ? 0 : ImageList::noImage;
    }

    static inline int alive = 0;
    static inline int textsAsked = 0;
    static inline int imagesAsked = 0;

private:
    QString m_name;
    QString m_version;
};

class VListCtrlTest : public ::testing::Test {
protected:
    VListCtrlTest()
    {
        list.addColumn("File Name", 3);
        list.addColumn("Version", 1);
        list.resize(800, 400);
        list.show();
    }

    void add(std::initializer_list<const char*> names)
    {
        for (const char* name : names)
            list.insertItem(0, VListCtrlItemRef(new Row(name, QString::number(list.itemCount()))));
        list.showRows();
    }

    QString names() const
    {
        QStringList out;
        for (int i = 0; i < list.itemCount(); ++i)
            out.append(list.item(i).text(0));
        return out.join(' ');
    }

    void clickTitle(int column)
    {
        const QHeaderView* header = list.header();
        const QPoint place(header->sectionViewportPosition(column) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    }

    VListCtrl list;
};

TEST_F(VListCtrlTest, TitlesSortByNaturalOrderWithoutCase)
{
    add({"part10", "Part9", "assy", "Zub", "part10", "ärmel"});
    EXPECT_EQ(names(), QString::fromUtf8("ärmel part10 Zub assy Part9 part10"));
    EXPECT_EQ(list.header()->sortIndicatorSection(), -1);
    clickTitle(0);
    EXPECT_EQ(names(), QString::fromUtf8("ärmel assy Part9 part10 part10 Zub"));
    EXPECT_TRUE(list.header()->isSortIndicatorShown());
    EXPECT_EQ(list.header()->sortIndicatorSection(), 0);
    clickTitle(0);
    EXPECT_EQ(names(), QString::fromUtf8("Zub part10 part10 Part9 assy ärmel"));
    list.removeAllItems();
    EXPECT_EQ(Row::alive, 0);
}

TEST_F(VListCtrlTest, SelectionStaysWithItsRowsAndIsCopied)
{
    add({"b", "a", "c"});
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Home);
    QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(list.selectedItems(), (std::vector<int>{0, 1})); // c and a
    QTimer::singleShot(0, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(menu->actions().size(), 2);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(5, 5), list.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(list.viewport(), &menuKey);
    EXPECT_EQ(names(), "a b c");
    EXPECT_EQ(list.selectedItems(), (std::vector<int>{0, 2}));
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "a\t0\nc\t0\n");
    list.removeItem(0);
    EXPECT_EQ(names(), "b c");
}

TEST_F(VListCtrlTest, ColumnsFollowTheListUntilTheUserChangesThem)
{
    const int unit = list.viewport()->width() / 10;
    EXPECT_EQ(list.columnWidth(0), 3 * unit);
    EXPECT_EQ(list.columnWidth(1), std::max(unit, list.header()->sectionSizeHint(1)));
    list.resize(1200, 400);
    EXPECT_EQ(list.columnWidth(0), 3 * (list.viewport()->width() / 10));

    add({"a name that is quite a bit longer than the column in which it stands, so that it is cut off there"});
    QHeaderView* header = list.header();
    const QPoint edge(header->sectionViewportPosition(1) - 1, header->height() / 2);
    QTest::mouseDClick(header->viewport(), Qt::LeftButton, {}, edge);
    const int fitted = list.columnWidth(0);
    EXPECT_GT(fitted, 3 * (list.viewport()->width() / 10));
    list.resize(900, 400);
    EXPECT_EQ(list.columnWidth(0), fitted);
}

TEST_F(VListCtrlTest, AHundredThousandRowsStayFluent)
{
    IconCache icons;
    icons.fileImage(u"x.zenprt");
    list.setImages(icons.images());
    Row::imagesAsked = 0;
    for (int i = 0; i < 100'000; ++i)
        list.insertItem(0, VListCtrlItemRef(new Row("Part " + QString::number(i * 7919 % 100'000), "1/1")));
    list.showRows();
    list.grab();
    Row::textsAsked = 0;
    clickTitle(0);
    list.grab();
    EXPECT_LT(Row::textsAsked, 2 * 17 * 100'000) << "two texts a comparison, 17 comparisons a row";
    EXPECT_EQ(list.item(0).text(0), "Part 0");
    EXPECT_EQ(list.item(99'999).text(0), "Part 99999");
    // Only rows on the screen are asked for their images.
    EXPECT_LT(Row::imagesAsked, 1000);
}

TEST(IconCache, ATypeHasOneImageWhateverTheFile)
{
    IconCache icons;
    const int part = icons.fileImage(u"C:\\V\\a.ZENPRT");
    EXPECT_EQ(icons.fileImage(u"b.zenprt"), part);
    EXPECT_NE(icons.fileImage(u"b.zenasm"), part);
    EXPECT_NE(icons.folderImage(), part);
    EXPECT_EQ(icons.folderImage(), icons.folderImage());
    EXPECT_FALSE(icons.images()->icon(part).isNull());
    EXPECT_TRUE(icons.images()->icon(99).isNull());
}

} // namespace
