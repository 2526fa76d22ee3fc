#include "tests/addin/libraries/lexmgr/LexFixture.h"
#include "tests/support/pages/Person.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QToolTip>
#include <QVBoxLayout>

namespace lexmgr {
namespace {

constexpr int titleLabel = 10, pathEdit = 11, optionBox = 12, okButton = 1, frameBox = 13;

/// A client that forbids tool tips and answers the library's messages.
class Client : public WindowClient {
public:
    std::u16string mbGetHelpString(int) override { return {}; }
    bool mvMsgBox(std::u16string_view text) override
    {
        message = text;
        return true;
    }
    bool mbPermitToolTip(int control) override { return control != okButton; }
    void mvDeInitialize() override { ++ended; }

    std::u16string message;
    int ended = 0;
};

class LexWindowTest : public LexFixture {
protected:
    void SetUp() override
    {
        write("LanFiles/DE/ZN.lan",
            "LanFile 1\n[TestDlg]\n0 = Test\n10 = &Pfad:\n11 = Pfad\n12 = &Option\n13 = Rahmen\n1 = Gut\n");
        window.registerControl(titleLabel, &label, u"&Path:");
        window.registerControl(pathEdit, &edit, u"Path");
        window.registerControl(optionBox, &option, u"&Option");
        window.registerControl(okButton, &ok, u"OK");
        window.registerControl(frameBox, &frame, u"");
        frame.setTitle("as it is");
        library->gvPushDefaultFile(u"ZN");
        ASSERT_TRUE(window.mbInitLexWnd(&dialog, u"TestDlg", u"Testing"));
        library->gvPopDefaultFile();
        dialog.resize(400, 300);
        dialog.show();
    }

    std::unique_ptr<Library> library = open();
    Client client;
    std::unique_ptr<Window> made = library->makeWindow(&client);
    Window& window = *made;
    QDialog dialog;
    QLabel label{&dialog};
    QLineEdit edit{&dialog};
    QCheckBox option{&dialog};
    QPushButton ok{&dialog};
    QGroupBox frame{&dialog};
};

TEST_F(LexWindowTest, TranslatesControlsByTheirNumber)
{
    EXPECT_EQ(dialog.windowTitle(), "Test");
    EXPECT_EQ(label.text(), "&Pfad:");
    EXPECT_EQ(edit.accessibleName(), "Pfad");
    EXPECT_EQ(option.text(), "&Option");
    EXPECT_EQ(ok.text(), "Gut");
    EXPECT_EQ(frame.title(), "as it is") << "a control without a text is not looked up";
}

TEST_F(LexWindowTest, ShowsAControlIfItselfAndAllItsGroupsAreShown)
{
    window.mvAddControl(1, pathEdit);
    window.mvAddControl(1, optionBox);
    window.mvAddControl(2, &option);
    window.mvShowGroup(1, showHidden);
    EXPECT_FALSE(edit.isVisible() || option.isVisible());
    EXPECT_TRUE(label.isVisible());

    EXPECT_TRUE(window.mbShowCtrl(pathEdit, showHidden));
    window.mvShowGroup(1, showNormal);
    EXPECT_FALSE(edit.isVisible()) << "hidden by itself";
    EXPECT_TRUE(option.isVisible());
    window.mvShowGroup(2, showHidden);
    window.mvShowGroup(1, showNormal);
    EXPECT_FALSE(option.isVisible()) << "its other group is hidden";
    window.mbShowCtrl(pathEdit, showNormal);
    EXPECT_TRUE(edit.isVisible());

    option.setEnabled(false);
    window.mvAddControl(3, optionBox);
    window.mvAddControl(3, okButton);
    window.mvEnableGroup(3, false);
    EXPECT_FALSE(ok.isEnabled());
    window.mvEnableGroup(3, true);
    EXPECT_TRUE(ok.isEnabled());
    EXPECT_FALSE(window.mbEnableCtrl(99, true));
    window.mbEnableCtrl(optionBox, true);
    EXPECT_TRUE(option.isEnabled());
}

TEST_F(LexWindowTest, MovesAndAnchorsWhatNoLayoutPlaces)
{
    label.setGeometry(10, 20, 60, 20);
    edit.setGeometry(80, 20, 100, 20);
    ok.setGeometry(300, 260, 80, 30);
    auto* placed = new QCheckBox(&frame);
    auto* rows = new QVBoxLayout(&frame);
    rows->addWidget(placed);
    frame.setGeometry(10, 60, 200, 100);
    rows->activate();
    const QRect place = placed->geometry();

    window.mvAddControl(1, titleLabel);
    window.mvAddControl(1, placed);
    window.mvMoveGroup(1, 5, -7);
    EXPECT_EQ(label.pos(), QPoint(15, 13));
    EXPECT_EQ(placed->geometry(), place);

    window.mvFixCtrl(okButton, 12);
    window.mvFixCtrl(titleLabel, 9);
    window.mvFixCtrl(pathEdit, anchorLeft | anchorTop | anchorRight);
    dialog.resize(450, 320);
    window.mvUpdateFixedCtrls();
    EXPECT_EQ(ok.geometry(), QRect(350, 280, 80, 30));
    EXPECT_EQ(label.geometry(), QRect(15, 33, 60, 20));
    EXPECT_EQ(edit.geometry(), QRect(80, 20, 150, 20));
    const Rect rect = window.moGetCtrlPos(okButton);
    EXPECT_EQ(QRect(QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1)), ok.geometry());
    EXPECT_EQ(window.moGetCtrlPos(99).right, 0);
}

TEST_F(LexWindowTest, AsksTheClientBeforeAToolTip)
{
    window.mbAddToolTip(okButton, u"Accepts");
    window.mbAddToolTip(optionBox, std::u16string(90, u'<'));
    EXPECT_TRUE(option.toolTip().startsWith("<qt>&lt;")) << "long texts break into lines";
    const auto tipOf = [](QWidget& control) {
        QToolTip::hideText();
        QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), control.mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(&control, &event);
        return QToolTip::text();
    };
    option.setToolTip("An option");
    EXPECT_EQ(tipOf(option), "An option");
    EXPECT_NE(tipOf(ok), "Accepts");
}

TEST_F(LexWindowTest, TellsTheClientItsEndOnce)
{
    {
        QDialog other;
        auto ofOther = library->makeWindow(&client);
        ofOther->mbInitLexWnd(&other, u"TestDlg");
    }
    EXPECT_EQ(client.ended, 1);
    EXPECT_FALSE(window.mbInitLexWnd(nullptr, u"TestDlg"));
}

TEST_F(LexWindowTest, OpensTheHelpAtATopicOrItsFirstPage)
{
    EXPECT_FALSE(library->mzbShowHelp(&ok, u"Topic", u"ZN"));
    EXPECT_NE(client.message.find(u"has no help pages"), client.message.npos);

    write("help/ZN/index.html", "<h1>Contents</h1><a href=\"Topic.html\">a topic</a>");
    write("help/ZN/Topic.html", "<p>About a topic</p>");
    const auto shown = [this] {
        const auto* text = dialog.findChild<QTextBrowser*>("helpText");
        return text ? text->toPlainText() : QString();
    };
    EXPECT_TRUE(library->mzbShowHelp(&ok, u"Topic", u"ZN"));
    EXPECT_EQ(shown(), "About a topic");
    for (const char16_t* topic : {u"NoTopic", u"../ZN/Topic", u""}) {
        EXPECT_TRUE(library->mzbShowHelp(&ok, topic, u"ZN"));
        EXPECT_TRUE(shown().startsWith("Contents"));
    }
    QTest::mouseClick(dialog.findChild<QPushButton*>("back"), Qt::LeftButton);
    EXPECT_EQ(shown(), "About a topic");
    EXPECT_EQ(dialog.findChildren<QTextBrowser*>().size(), 1) << "one window serves all topics";
    QTest::keyClick(dialog.findChild<QDialog*>("helpWindow"), Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(dialog.findChildren<QTextBrowser*>().isEmpty());
}

TEST_F(LexWindowTest, SaysThatHelpIsMissingWhereNoClientDoes)
{
    const zn::test::Answers answers({QMessageBox::Ok});
    EXPECT_FALSE(library->mzbShowHelp(nullptr, u"Topic", u"ZN"));
    EXPECT_TRUE(answers.shown().join("").contains(QString::fromStdString((folder / "help/ZN").string())));
}

/// The test program's screen has 144 dots per inch.
TEST_F(LexFixture, ScalesPicturesWithTheScreenAndIconsInSteps)
{
    const auto library = open();
    EXPECT_EQ(library->dpi().scaleX(480), 720);
    EXPECT_EQ(library->dpi().getDesiredBitmapImageSize(e_arkImageUseType::Picture, 21), 32);
    EXPECT_EQ(library->dpi().getDesiredBitmapImageSize(e_arkImageUseType::Icon, 16), 24);
}

} // namespace
} // namespace lexmgr
