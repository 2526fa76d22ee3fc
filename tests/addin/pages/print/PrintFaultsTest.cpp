#include "tests/addin/pages/print/PrintFixture.h"
#include "tests/support/FakeHost.h"

#include <QPlainTextEdit>
#include <QSpinBox>

namespace zn {
namespace {

using namespace test;
using testing::IsEmpty;

constexpr auto ok = QMessageBox::Ok;

class PrintFaultsTest : public PrintFixture { };

TEST_F(PrintFaultsTest, MarginsTabShowsAndWritesTheOpenGroups)
{
    Answers person({[](QWidget& dialog) {
        auto* tabs = find<QTabWidget>(dialog, "tabs");
        ASSERT_EQ(tabs->count(), 2);
        tabs->setCurrentIndex(1);
        EXPECT_TRUE(
            find<QWidget>(dialog, "headerCustom")->isHidden() || !find<QWidget>(dialog, "headerCustom")->isVisible());
        EXPECT_FALSE(find<QSpinBox>(dialog, "marginTop")->isEnabled());
        EXPECT_EQ(find<QSpinBox>(dialog, "marginTop")->value(), 12);
        click(find<QAbstractButton>(dialog, "customMargins"));
        auto* left = find<QSpinBox>(dialog, "marginLeft");
        left->selectAll();
        type(left, "25");
        click(find<QAbstractButton>(dialog, "footerCustom"));
        auto* center = find<QPlainTextEdit>(dialog, "footerCenter");
        type(center, "Page");
        press(center, Qt::Key_Return);
        type(center, "two");
        pressLater(dialog, "print");
    }});
    EXPECT_TRUE(launch({{u"__printer_margintop", 12.4F}, {u"__printer_headertype", 2},
                           {u"__printer_footerleft", u"Left\r\nover"}, {u"__printer_usersizechange", false},
                           {u"__printer_refversiontype", 0}, {u"__printer_userorientchange", false}},
        true));
    EXPECT_THAT(written(),
        ElementsAre("copycount=1", "footercenter=Page\r\ntwo", "footerleft=Left\r\nover",
            "footerright=", "footertype=2", "marginbottom=0", "marginleft=25", "marginright=0", "margintop=12"));
    EXPECT_EQ(run->ownVariables().at(u"__printer_marginleft").type(), ValueType::Int32);
}

TEST_F(PrintFaultsTest, WithoutTheUserItsMessagesEndTheLaunch)
{
    select({});
    {
        Answers person({ok});
        EXPECT_FALSE(launch({}, false));
        EXPECT_EQ(person.shown(), QStringList("Please select at least one file."));
    }
    pages().setAttended(false);
    EXPECT_FALSE(launch({{u"__printer_prseltype", 1}}, false));
    EXPECT_EQ(toUtf8(pages().takeUnspoken()), "No printer selected.");
}

TEST_F(PrintFaultsTest, LeavesOutFilesThatTheUserMayNotRead)
{
    m_vault.vault.permissions().set(*m_vault.vault.findFolder(m_vault.path("parts")), u"anna", {false, true, true});
    EXPECT_TRUE(launch({{u"__printer_autoselectrefstype", 3}}, false));
    EXPECT_THAT(selected(), ElementsAre("top.zenasm@1", "sub.zenasm@1", "top.zendrw@1"));
}

TEST_F(PrintFaultsTest, SaysWhatItCannotStartWithout)
{
    {
        Answers person({[](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), "ZENTREL Print Add-In");
            box.close();
        }});
        EXPECT_FALSE(pages().showPrintDialog(vault, nullptr, selection, true));
        EXPECT_EQ(person.shown(), QStringList("ArkCmd struct is NULL"));
    }
    {
        Answers person({ok});
        ArkCmd cmd;
        EXPECT_FALSE(pages().showPrintDialog(vault, &cmd, selection, true));
        EXPECT_EQ(person.shown(), QStringList("Failed to get IArkTaskInstance ptr from ArkCmd"));
    }
    zn::arkin::unregisterRefTree(ports.registry);
    Answers person({ok});
    EXPECT_FALSE(launch({}, true));
    EXPECT_EQ(person.shown(),
        QStringList("Could not create the IXRefTreeListCtrl control.\nThe class 'Arkin.XRefTreeListCtrl' isn't "
                    "registered here."));
    EXPECT_THAT(written(), IsEmpty());
}

TEST_F(PrintFaultsTest, GoesOnWithoutRowsWhenTheListFails)
{
    FakeHost host;
    Answers person({[](QWidget& box) { box.close(); },
        [](QWidget& dialog) {
            EXPECT_THAT(outline(dialog), IsEmpty());
            pressLater(dialog, "cancel");
        }});
    ArkCmd cmd;
    cmd.taskObject = host.task();
    EXPECT_FALSE(pages().showPrintDialog(host.vault(), &cmd, selection, true));
    EXPECT_TRUE(person.shown()[0].startsWith("Failed to read information about selected files.\n"))
        << person.shown()[0].toStdString();
}

TEST_F(PrintFaultsTest, AFailedWriteRefusesTheOkAtItsControl)
{
    const struct {
        const char* variable;
        const char* control;
    } rows[] = {
        {"__printer_refversiontype", "portrait"},
        {"__printer_deforientation", "portrait"},
        {"__printer_defpapsize", "paperSize"},
        {"__printer_copycount", "copies"},
    };
    for (const auto& row : rows) {
        FakeHost host;
        host.failures[std::string("SetValue ") + row.variable] = E_ACCESSDENIED;
        QPointer<QWidget> focus;
        Answers person({[](QWidget& dialog) { pressLater(dialog, "print"); }, [](QWidget& box) { box.close(); },
            [&](QWidget& dialog) {
                EXPECT_EQ(dialog.focusWidget(), find<QWidget>(dialog, row.control)) << row.variable;
                pressLater(dialog, "cancel");
            }});
        ArkCmd cmd;
        cmd.taskObject = host.task();
        EXPECT_FALSE(pages().showPrintDialog(vault, &cmd, selection, true));
    }
}

} // namespace
} // namespace zn
