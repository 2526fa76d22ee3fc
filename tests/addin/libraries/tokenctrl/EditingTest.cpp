#include "tests/addin/libraries/tokenctrl/BoxWindow.h"

#include <gtest/gtest.h>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>

namespace tokenctrl::test {

TEST(TokenEditing, TypedPatternsTurnIntoTokensAndOnlyTheyDo)
{
    const struct {
        const char* typed;
        const char* shown;
    } cases[] = {
        {"<Path>\\<Filename>_x", "#\\#_x|"},
        {"<path>", "<path>|"}, // case matters
        {"<Other>%None%", "<Other>%None%|"},
        {"50%%Number%", "50%#|"},
        {"%A&B%%Number%", "##|"},
        {"<<Path>>", "<#>|"},
    };
    for (const auto& each : cases) {
        BoxWindow window;
        window.type(each.typed);
        EXPECT_EQ(window.shown(), each.shown);
        EXPECT_EQ(window.text(), each.typed);
    }
}

TEST(TokenEditing, ATokenIsCompletedInTheMiddleAndByDeleting)
{
    BoxWindow window;
    window.type("<Pth>");
    window.key(Qt::Key_Left, Qt::NoModifier, 3);
    window.type("a");
    EXPECT_EQ(window.shown(), "#|");

    window.box->mvSetText(u"<Filenname>!");
    window.key(Qt::Key_Left, Qt::NoModifier, 6);
    window.key(Qt::Key_Backspace);
    EXPECT_EQ(window.shown(), "#|!");
    EXPECT_EQ(window.text(), "<Filename>!");
}

TEST(TokenEditing, TheCaretMovesOverATokenAndDeletesItAsOne)
{
    BoxWindow window;
    window.box->mvSetText(u"a<Path>%Number%b");
    EXPECT_EQ(window.shown(), "a##b|");
    window.key(Qt::Key_Left, Qt::NoModifier, 3);
    EXPECT_EQ(window.shown(), "a|##b");
    window.key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(window.edit->textCursor().selectionStart(), 1);
    EXPECT_EQ(window.edit->textCursor().selectionEnd(), 2);
    window.key(Qt::Key_Delete);
    EXPECT_EQ(window.text(), "a%Number%b");
    window.key(Qt::Key_Right);
    window.key(Qt::Key_Backspace);
    EXPECT_EQ(window.text(), "ab");
    window.type("c");
    EXPECT_EQ(window.text(), "acb");
}

TEST(TokenEditing, CopiesPatternsAndPastesThemAsTokens)
{
    BoxWindow window;
    window.box->mvSetText(u"<Path>\\x_%Number%");
    window.key(Qt::Key_A, Qt::ControlModifier);
    window.key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(window.text(), "");
    EXPECT_EQ(QApplication::clipboard()->text(), "<Path>\\x_%Number%");
    EXPECT_FALSE(QApplication::clipboard()->mimeData()->hasHtml());

    window.key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(window.shown(), "#\\x_#|");

    QApplication::clipboard()->setText("a\r\nb\nc\td\u2029<Filename>\uFFFC");
    window.key(Qt::Key_A, Qt::ControlModifier);
    window.key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(window.text(), "a b c d <Filename> ");
    EXPECT_EQ(window.shown(), "a b c d # |");
}

TEST(TokenEditing, UndoAndRedoGoOverTokens)
{
    BoxWindow window;
    window.box->mvSetText(u"x");
    window.type("<Path>");
    ASSERT_EQ(window.shown(), "x#|");
    window.key(Qt::Key_Backspace);
    ASSERT_EQ(window.text(), "x");
    window.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(window.shown(), "x#|");
    window.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(window.text(), "x");
    // The text that the dialog set is where undo ends.
    window.key(Qt::Key_Z, Qt::ControlModifier, 3);
    EXPECT_EQ(window.text(), "x");
    window.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(window.shown(), "x#|");
    EXPECT_EQ(window.told.back(), "x<Path>");
}

TEST(TokenEditing, AMenuOfTheDialogInsertsATokenThatCanBeUndone)
{
    BoxWindow window;
    window.box->mvSetText(u"ab");
    window.key(Qt::Key_Left);
    window.told.clear();
    window.edit->insertPlainText("<Path>");
    EXPECT_EQ(window.shown(), "a#|b");
    EXPECT_EQ(window.told, std::vector<QString>{"a<Path>b"});
    window.key(Qt::Key_Z, Qt::ControlModifier, 2);
    EXPECT_EQ(window.text(), "ab");
}

TEST(TokenEditing, TheCallbackMayReplaceWhatWasTypedAndUndoTakesBothBack)
{
    BoxWindow window;
    window.onChange = [&] {
        const QString text = window.text();
        if (text.startsWith("C:\\V"))
            window.box->mvSetText(("<Path>" + text.mid(4)).toStdU16String());
    };
    window.box->mvSetText(u"%Number%");
    window.key(Qt::Key_Home);
    window.told.clear();
    window.type("C:\\V");
    EXPECT_EQ(window.shown(), "#|#");
    EXPECT_EQ(window.text(), "<Path>%Number%");
    EXPECT_EQ(window.told.back(), "<Path>%Number%");
    window.type("\\a");
    EXPECT_EQ(window.text(), "<Path>\\a%Number%");
    window.key(Qt::Key_Z, Qt::ControlModifier, 2);
    EXPECT_EQ(window.text(), "%Number%");
}

TEST(TokenEditing, TheCallbackRunsOnceAChange)
{
    BoxWindow window;
    window.box->mvSetText(u"");
    window.box->mvSetText(u"<Path>");
    window.box->mvSetText(u"<Path>");
    window.type("ab");
    window.key(Qt::Key_Left);
    EXPECT_EQ(window.told, (std::vector<QString>{"", "<Path>", "<Path>", "<Path>a", "<Path>ab"}));
    window.box->mvRegisterCallback(nullptr);
    window.type("c");
    EXPECT_EQ(window.told.size(), 5U);
}

TEST(TokenEditing, EnterAndTabStayWithTheDialog)
{
    BoxWindow window;
    window.type("a");
    window.key(Qt::Key_Return);
    window.key(Qt::Key_Enter, Qt::ShiftModifier);
    EXPECT_EQ(window.text(), "a");
    window.key(Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), window.menuButton);
    EXPECT_EQ(window.text(), "a");
    QTest::keyClick(&window, Qt::Key_P, Qt::AltModifier);
    EXPECT_EQ(window.focusWidget(), window.edit);
}

TEST(TokenEditing, ScreenReadersHearThePatterns)
{
    BoxWindow window;
    window.box->mvSetText(u"a<Path>b");
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(window.edit);
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->role(), QAccessible::EditableText);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Default path:");
    EXPECT_EQ(spoken->text(QAccessible::Value), "a<Path>b");
    ASSERT_NE(spoken->textInterface(), nullptr);
    EXPECT_EQ(spoken->textInterface()->text(1, 7), "<Path>");
    EXPECT_EQ(spoken->textInterface()->cursorPosition(), 8);
    spoken->textInterface()->setSelection(0, 2, 5); // inside the token
    EXPECT_EQ(window.edit->textCursor().selectionStart(), 1);
    EXPECT_EQ(window.edit->textCursor().selectionEnd(), 2);
}

TEST(TokenEditing, GrowsWithItsTextUpToAFewLines)
{
    BoxWindow window;
    window.resize(500, 300);
    const int oneLine = window.edit->minimumSizeHint().height();
    const auto hasHeight = [&](int tokens, int least, int most) {
        std::u16string text;
        for (int i = 0; i < tokens; ++i)
            text += u"<Path>%Number%";
        window.box->mvSetText(text);
        return QTest::qWaitFor([&] { return window.edit->height() >= least && window.edit->height() <= most; });
    };
    EXPECT_TRUE(hasHeight(0, oneLine, oneLine));
    EXPECT_TRUE(hasHeight(1, oneLine, oneLine)) << "a token is no higher than the empty box";
    EXPECT_TRUE(hasHeight(6, oneLine + 1, 3 * oneLine));
    EXPECT_TRUE(hasHeight(60, 3 * oneLine, 4 * oneLine));
    EXPECT_TRUE(hasHeight(90, 3 * oneLine, 4 * oneLine));
    EXPECT_TRUE(hasHeight(1, oneLine, oneLine)) << "it shrinks again";
}

TEST(TokenEditing, BoxAndWindowMayGoInEitherOrder)
{
    auto box = makeBox();
    box->mvAddPattern(u"<Path>", false, u"Path", nullptr, nullptr);
    auto place = std::make_unique<QWidget>();
    box->mvDDX_Control(place.get());
    box->mvSetText(u"<Path>");
    place.reset();
    EXPECT_EQ(box->moGetText(), u"");
    box->mvSetText(u"x");
    EXPECT_FALSE(box->mbShowMenu(nullptr, nullptr));

    BoxWindow window;
    window.box.reset();
    EXPECT_EQ(window.place->findChild<QTextEdit*>(), nullptr);
}

} // namespace tokenctrl::test
