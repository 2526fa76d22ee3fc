#include "addin/pages/print/StrComp.h"
#include "tests/addin/pages/print/PrintFixture.h"

#include <array>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QScreen>
#include <QSpinBox>

namespace zn {
namespace {

using namespace test;
using testing::IsEmpty;
using Lines = std::vector<std::string>;
using zn::arkin::Variables;

class PrintLaunchTest : public PrintFixture { };

TEST(StrComp, PadsNumbersToAWidth)
{
    EXPECT_EQ(StrComp(-42).text(), u"-42");
    EXPECT_EQ(StrComp(42, 5).text(), u"   42");
    EXPECT_EQ(StrComp(42, 5, true).text(), u"00042");
    EXPECT_EQ(StrComp(123456, 3).text(), u"123456");
    EXPECT_EQ(StrComp(99'999'900'000).text(), u"99999900000");
}

TEST_F(PrintLaunchTest, TicksReferencesByTheRuleInTheVersionOfTheTask)
{
    const struct {
        std::int32_t rule;
        std::int32_t version;
        Lines files;
    } rows[] = {
        {0, 0, {"top.zenasm@1"}},
        {1, 0, {"top.zenasm@1", "top.zendrw@1", "bolt.zendrw@1"}},
        {2, 0, {"top.zenasm@1", "bolt.zenprt@1", "sub.zenasm@1", "washer.zenprt@1"}},
        {3, 1, {"top.zenasm@1", "bolt.zenprt@2", "sub.zenasm@1", "top.zendrw@1", "bolt.zendrw@1", "washer.zenprt@1"}},
    };
    for (const auto& row : rows) {
        select({top});
        const Variables variables{{u"__printer_autoselectrefstype", row.rule},
            {u"__printer_refversiontype", row.version}, {u"__printer_userorientchange", false},
            {u"__printer_usersizechange", false}, {u"__printer_margintype", 0}, {u"__printer_headertype", 2},
            {u"__printer_footertype", 0}};
        EXPECT_TRUE(launch(variables, false));
        EXPECT_EQ(selected(), row.files) << "rule " << row.rule;
        EXPECT_THAT(written(), ElementsAre("copycount=1"));
    }
    EXPECT_EQ(selection[1].path, m_vault.path("parts") + u"\\bolt.zenprt");
}

TEST_F(PrintLaunchTest, AFolderNamedByTheUserBringsItsOwnFiles)
{
    const auto parts = *m_vault.vault.findFolder(m_vault.path("parts"));
    m_vault.addReleased("parts/deep/pin.zenprt", "pin");
    selection = {{0, parts, m_vault.path("parts"), u"", ArkItemType::Folder, 0}};
    EXPECT_TRUE(launch({{u"__printer_autoselectrefstype", 0}}, false));
    EXPECT_THAT(selected(), ElementsAre("bolt.zenprt@2", "washer.zenprt@1"));
}

TEST_F(PrintLaunchTest, WritesWhatTheUserChose)
{
    addPrinter(u"Hall");
    addPrinter(u"Office");
    Answers person({[](QWidget& dialog) {
        auto* printer = find<QComboBox>(dialog, "printer");
        EXPECT_EQ(printer->currentText().toStdString(), "OFFICE");
        printer->setFocus();
        press(printer, Qt::Key_Up);
        press(find<QWidget>(dialog, "paperSize"), Qt::Key_Up);
        click(find<QAbstractButton>(dialog, "landscape"));
        auto* copies = find<QSpinBox>(dialog, "copies");
        copies->selectAll();
        type(copies, "2");
        EXPECT_EQ(find<QLabel>(dialog, "total")->text(), "Total: 6");
        EXPECT_EQ(find<QTabWidget>(dialog, "tabs")->count(), 1);
        press(copies, Qt::Key_Return);
    }});
    EXPECT_TRUE(launch({{u"__printer_prseltype", 1}, {u"__printer_prnamelist", u"Hall\r\nGone\r\nOFFICE"},
                           {u"__printer_prname", u"Office"}, {u"__printer_defpapsize", 4}, {u"__printer_margintype", 2},
                           {u"__printer_headertype", 0}, {u"__printer_footertype", 0}},
        true));
    EXPECT_THAT(
        written(), ElementsAre("copycount=2", "deforientation=1", "defpapsize=3", "prname=Hall", "refversiontype=0"));
    EXPECT_THAT(selected(), ElementsAre("top.zenasm@1", "top.zendrw@1", "bolt.zendrw@1"));
}

TEST_F(PrintLaunchTest, CancellingAndEscapeWriteNothing)
{
    const ArkSelection before = selection;
    Answers person({[](QWidget& dialog) { pressLater(dialog, "cancel"); },
        [](QWidget& dialog) { press(&dialog, Qt::Key_Escape); }});
    EXPECT_FALSE(launch({}, true));
    EXPECT_FALSE(launch({}, true));
    EXPECT_THAT(written(), IsEmpty());
    EXPECT_EQ(selection.size(), before.size());
}

TEST_F(PrintLaunchTest, TicksByKeysAndClicksAndTheSameFileAtAllItsPlaces)
{
    Answers person({[](QWidget& dialog) {
        auto* tree = find<QWidget>(dialog, "fileTree");
        EXPECT_EQ(outline(dialog),
            (Lines{"[x] top.zenasm 1", "  [x] top.zendrw 1", "  [ ] bolt.zenprt 1", "    [x] bolt.zendrw 1",
                "   -  notes.txt 1 Unsupported File Format", "  [ ] sub.zenasm 1"}));
        go(dialog, {"top.zenasm", "notes.txt"});
        press(tree, Qt::Key_Space);
        press(tree, Qt::Key_Down);
        press(tree, Qt::Key_Right);
        press(tree, Qt::Key_Down);
        press(tree, Qt::Key_Space);
        EXPECT_EQ(outline(dialog),
            (Lines{"[x] top.zenasm 1", "  [x] top.zendrw 1", "  [x] bolt.zenprt 1", "    [x] bolt.zendrw 1",
                "   -  notes.txt 1 Unsupported File Format", "  [ ] sub.zenasm 1", "    [x] bolt.zenprt 1",
                "    [ ] washer.zenprt 1"}));
        EXPECT_EQ(find<QLabel>(dialog, "total")->text(), "Total: 4");
        const QModelIndex rows[] = {go(dialog, {"top.zenasm", "sub.zenasm"}), go(dialog, {"top.zenasm", "top.zendrw"}),
            go(dialog, {"top.zenasm", "bolt.zenprt"}), go(dialog, {"top.zenasm", "notes.txt"})};
        const auto icon
            = [](const QModelIndex& row) { return row.data(Qt::DecorationRole).value<QIcon>().pixmap(32).toImage(); };
        EXPECT_EQ(icon(rows[0]), icon(go(dialog, {"top.zenasm"})));
        for (int other : {1, 2, 3})
            EXPECT_NE(icon(rows[0]), icon(rows[other])) << "a type has an icon of its own";
        EXPECT_TRUE(rows[3].data(Qt::ForegroundRole).isValid()) << "grey";
        EXPECT_FALSE(rows[2].data(Qt::ForegroundRole).isValid());
        click(find<QAbstractButton>(dialog, "latestVersion"));
        EXPECT_EQ(outline(dialog),
            (Lines{"[x] top.zenasm 1", "  [x] top.zendrw 1", "  [x] bolt.zenprt 2", "    [x] bolt.zendrw 1",
                "   -  notes.txt 1 Unsupported File Format", "  [ ] sub.zenasm 1", "    [x] bolt.zenprt 2",
                "    [ ] washer.zenprt 1"}))
            << "ticks and open rows stay";
        clickBox(dialog, go(dialog, {"top.zenasm", "sub.zenasm", "washer.zenprt"}));
        EXPECT_EQ(find<QLabel>(dialog, "total")->text(), "Total: 5");
        pressLater(dialog, "print");
    }});
    EXPECT_TRUE(launch({}, true));
    EXPECT_THAT(written(),
        ElementsAre("copycount=1", "deforientation=0", "defpapsize=10", "footertype=0", "headertype=0", "margintype=0",
            "refversiontype=1"));
    EXPECT_THAT(
        selected(), ElementsAre("top.zenasm@1", "bolt.zenprt@2", "top.zendrw@1", "bolt.zendrw@1", "washer.zenprt@1"));
}

TEST_F(PrintLaunchTest, FilesThatReferToEachOtherComeToAnEnd)
{
    const Place a = m_vault.add("a.zenasm", "a").place;
    const Place b = m_vault.add("b.zenasm", "b").place;
    m_vault.refer(a, {b});
    m_vault.refer(b, {a});
    m_vault.checkInAll({a, b});
    select({a});
    Answers person({[](QWidget& dialog) {
        press(find<QWidget>(dialog, "fileTree"), Qt::Key_Asterisk);
        EXPECT_EQ(outline(dialog), (Lines{"[x] a.zenasm 1", "  [ ] b.zenasm 1"}));
        pressLater(dialog, "cancel");
    }});
    EXPECT_FALSE(launch({}, true));
}

TEST_F(PrintLaunchTest, OffersThePrintersOfTheTaskThatTheMachineHas)
{
    addPrinter(u"Hall");
    addPrinter(u"Office");
    const struct {
        std::int32_t selectionType = 0;
        const char16_t* list = u"";
        const char16_t* name = u"";
        QStringList offered;
        bool enabled = false;
    } rows[] = {
        {1, u"Office\n\nHall", u"hall", {"Office", "Hall"}, true},
        {1, u"Office\nHall", u"", {"Office", "Hall"}, true},
        {1, u"Office", u"Hall", {"Hall"}, true},
        {1, u"Office", u"Gone", {}, true},
        {1, u"", u"", {}, true},
        {0, u"", u"Office", {"Office"}, false},
        {2, u"Office", u"Office", {"Plotter"}, false},
    };
    for (const auto& row : rows) {
        Answers person({[&](QWidget& dialog) {
            auto* printer = find<QComboBox>(dialog, "printer");
            QStringList offered;
            for (int i = 0; i < printer->count(); ++i)
                offered << printer->itemText(i);
            EXPECT_EQ(offered, row.offered);
            EXPECT_EQ(printer->isEnabled(), row.enabled);
            if (row.offered.size() == 2) {
                EXPECT_EQ(printer->currentText(), *row.name ? "Hall" : "Office");
            }
            pressLater(dialog, "cancel");
        }});
        launch(
            {{u"__printer_prseltype", row.selectionType}, {u"__printer_prnamelist", row.list},
                {u"__printer_prname", row.name}, {u"__printer_papsize_A0", u"Plotter"}, {u"__printer_defpapsize", 6}},
            true);
    }
}

TEST_F(PrintLaunchTest, ShowsThePrinterOfTheChosenSize)
{
    Answers person({[](QWidget& dialog) {
        auto* size = find<QComboBox>(dialog, "paperSize");
        EXPECT_EQ(size->currentIndex(), -1) << "a hidden size has no entry";
        size->setCurrentIndex(size->findText("A0"));
        EXPECT_EQ(find<QComboBox>(dialog, "printer")->currentText(), "Plotter");
        size->setCurrentIndex(size->findText("B"));
        EXPECT_EQ(find<QComboBox>(dialog, "printer")->currentText(), "");
        size->setCurrentIndex(-1);
        EXPECT_TRUE(find<QWidget>(dialog, "orientation")->isHidden());
        EXPECT_TRUE(find<QWidget>(dialog, "latestVersion")->isHidden());
        pressLater(dialog, "print");
    }});
    EXPECT_TRUE(
        launch({{u"__printer_prseltype", 2}, {u"__printer_papsize_A0", u"Plotter"}, {u"__printer_defpapsize", 11},
                   {u"__printer_userorientchange", false}, {u"__printer_refversiontype", 1},
                   {u"__printer_margintype", 0}, {u"__printer_headertype", 0}, {u"__printer_footertype", 0}},
            true));
    EXPECT_THAT(written(), ElementsAre("copycount=1")) << "the hidden size stays the task's";
}

TEST_F(PrintLaunchTest, RefusesWithAMessageAndStaysOpen)
{
    Answers person({
        [](QWidget& dialog) { pressLater(dialog, "print"); },
        [](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), "Print");
            box.close();
        },
        [&](QWidget& dialog) {
            EXPECT_EQ(dialog.focusWidget(), find<QWidget>(dialog, "printer"));
            find<QComboBox>(dialog, "printer")->addItem("Any");
            find<QComboBox>(dialog, "printer")->setCurrentIndex(0);
            find<QSpinBox>(dialog, "copies")->setValue(0);
            pressLater(dialog, "print");
        },
        [](QWidget& box) { box.close(); },
        [](QWidget& dialog) {
            auto* copies = find<QSpinBox>(dialog, "copies");
            EXPECT_EQ(dialog.focusWidget(), copies);
            copies->selectAll();
            type(copies, "1000");
            pressLater(dialog, "print");
        },
        [](QWidget& box) { box.close(); },
        [](QWidget& dialog) {
            auto* copies = find<QSpinBox>(dialog, "copies");
            EXPECT_EQ(dialog.focusWidget(), copies);
            copies->selectAll();
            type(copies, "999");
            go(dialog, {"top.zenasm"});
            press(find<QWidget>(dialog, "fileTree"), Qt::Key_Space);
            EXPECT_EQ(find<QLabel>(dialog, "total")->text(), "Total: 0");
            pressLater(dialog, "print");
        },
        [](QWidget& box) { box.close(); },
        [](QWidget& dialog) { pressLater(dialog, "cancel"); },
    });
    EXPECT_FALSE(launch({{u"__printer_prseltype", 1}, {u"__printer_autoselectrefstype", 0}}, true));
    EXPECT_EQ(person.shown(),
        QStringList({"Print", "No printer selected.", "Print", "Enter number of copies to print.", "Print",
            "No more than 999 copies can be printed at once. Enter a smaller number.", "Print",
            "Please select at least one file.", "Print"}));
}

TEST_F(PrintLaunchTest, FitsOnTheScreenWithLettersOfTwiceTheSize)
{
    const QFont font = QApplication::font();
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * 2);
    QApplication::setFont(large);
    Answers person({[](QWidget& dialog) {
        const QSize screen = dialog.screen()->availableGeometry().size();
        for (int tab : {0, 1}) {
            find<QTabWidget>(dialog, "tabs")->setCurrentIndex(tab);
            QApplication::processEvents();
            EXPECT_LE(dialog.height(), screen.height());
            EXPECT_LE(dialog.minimumSizeHint().height(), screen.height());
        }
        // By the keys, also from outside the tabs, and with no other value than before.
        auto* printer = find<QComboBox>(dialog, "paperSize");
        printer->setFocus();
        const int size = printer->currentIndex();
        press(printer, Qt::Key_PageUp, Qt::ControlModifier);
        EXPECT_EQ(find<QTabWidget>(dialog, "tabs")->currentIndex(), 0);
        press(find<QTreeView>(dialog, "fileTree"), Qt::Key_PageDown, Qt::ControlModifier);
        EXPECT_EQ(find<QTabWidget>(dialog, "tabs")->currentIndex(), 1);
        EXPECT_EQ(printer->currentIndex(), size);
        pressLater(dialog, "cancel");
    }});
    EXPECT_FALSE(launch({}, true));
    QApplication::setFont(font);
}

TEST_F(PrintLaunchTest, ThePressedVersionCanBeToldInEveryPalette)
{
    const auto tone = [](QWidget* button) {
        const QColor colour
            = button->grab().toImage().scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixelColor(0, 0);
        return std::array{colour.red(), colour.green(), colour.blue()};
    };
    const QPalette before = QApplication::palette();
    for (const int ground : {40, 239}) {
        QApplication::setPalette(QPalette(QColor(ground, ground, ground)));
        Answers person({[&](QWidget& dialog) {
            const auto pressed = tone(find<QWidget>(dialog, "latestVersion"));
            const auto other = tone(find<QWidget>(dialog, "referencedVersion"));
            int difference = 0;
            for (std::size_t i = 0; i < 3; ++i)
                difference += std::abs(pressed[i] - other[i]);
            EXPECT_GT(difference, 90) << ground;
            pressLater(dialog, "cancel");
        }});
        launch({{u"__printer_refversiontype", 2}}, true);
    }
    QApplication::setPalette(before);
}

} // namespace
} // namespace zn
