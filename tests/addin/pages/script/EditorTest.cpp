#include "addin/pages/script/MacroEditor.h"

#include "addin/pages/script/MacroEdit.h"
#include "qtglue/Texts.h"

#include <gtest/gtest.h>
#include <QCheckBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTextBlock>
#include <QToolTip>
#include <QVBoxLayout>

using namespace zn;

namespace {

/// The editor in a window with a button behind it, as keys and clicks reach it.
class MacroEditorTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&editor);
        column->addWidget(&button);
        window.resize(700, 500);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        editor.setFocus();
    }

    MacroEdit& edit() { return editor.edit(); }
    template <class Widget> Widget* child(const char* name) { return editor.findChild<Widget*>(name); }
    QString text() { return shown(edit().plainText()); }

    void typeLines(std::initializer_list<const char*> lines)
    {
        for (const char* line : lines) {
            QTest::keyClicks(&edit(), line);
            QTest::keyClick(&edit(), Qt::Key_Return);
        }
    }
    void caretTo(const QString& what)
    {
        QTextCursor caret = edit().document()->find(what);
        ASSERT_FALSE(caret.isNull()) << qPrintable(what);
        caret.setPosition(caret.selectionStart());
        edit().setTextCursor(caret);
    }

    QStringList marked(QTextCharFormat::UnderlineStyle style)
    {
        QStringList out;
        for (const auto& selection : edit().extraSelections())
            if (selection.format.underlineStyle() == style && selection.cursor.hasSelection())
                out.append(QString::number(selection.cursor.blockNumber() + 1) + ":" + selection.cursor.selectedText());
        return out;
    }

    QString status() { return child<QLabel>("macroStatus")->text(); }
    bool waitForStatus(const QString& wanted)
    {
        return QTest::qWaitFor([&] { return status().contains(wanted); }, 5000);
    }

    QWidget window;
    MacroEditor editor;
    QPushButton button;
};

TEST_F(MacroEditorTest, TypingIndentsBlocksAndAlignsTheirEnds)
{
    typeLines({"Sub main()", "If a Then", "b = 1", "Else"});
    QTest::keyClick(&edit(), Qt::Key_Tab);
    QTest::keyClick(&edit(), Qt::Key_Backspace);
    typeLines({"End If", "End Sub"});
    EXPECT_EQ(text(), "Sub main()\n    If a Then\n        b = 1\n    Else\n    End If\nEnd Sub\n");

    // The line and the alignment are one step back.
    QTest::keyClick(&edit(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(text().endsWith("    End If\n    End Sub")) << qPrintable(text());
    QTest::keyClick(&edit(), Qt::Key_Y, Qt::ControlModifier);

    QTest::keyClick(&edit(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&edit(), Qt::Key_Tab);
    EXPECT_TRUE(text().startsWith("    Sub main()\n        If a Then\n            b = 1\n"));
    QTest::keyClick(&edit(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(text().startsWith("Sub main()\n    If a Then\n        b = 1\n"));
    QTest::keyClick(&edit(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(text().startsWith("    Sub main()"));
}

TEST_F(MacroEditorTest, ControlTabLeaves)
{
    QTest::keyClick(&edit(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_FALSE(edit().hasFocus());
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(edit().hasFocus());
    EXPECT_EQ(text(), "");
}

TEST_F(MacroEditorTest, WordsOfTheCaretsBlockAreMarked)
{
    edit().setMacroText(u"Sub a()\r\n  For i = 1 To 2\r\n    If i Then b\r\n  Next i\r\nEnd Sub\r\n");
    const auto words = [this] {
        QStringList out;
        for (const auto& selection : edit().extraSelections())
            if (selection.cursor.hasSelection())
                out.append(selection.cursor.selectedText());
        return out;
    };
    caretTo("Next");
    EXPECT_EQ(words(), QStringList({"For", "Next"}));
    caretTo("End Sub");
    EXPECT_EQ(words(), QStringList({"Sub", "End Sub"}));
    caretTo("If i");
    EXPECT_EQ(words(), QStringList());
}

TEST_F(MacroEditorTest, MistakesAreMarkedAndTold)
{
    edit().setMacroText(u"Option Explicit\r\nSub main()\r\n    x = \"[OutputPath]\"\r\nEnd Sub\r\n");
    ASSERT_TRUE(waitForStatus("Line 3"));
    EXPECT_EQ(marked(QTextCharFormat::WaveUnderline), QStringList({"3:x"}));
    for (int i = 0; i < 2; ++i) { // the only one comes again
        QTest::keyClick(&edit(), Qt::Key_F8);
        EXPECT_EQ(edit().textCursor().blockNumber(), 2);
    }

    caretTo("x =");
    const QPoint place = edit().cursorRect().center() + QPoint(2, 0);
    QHelpEvent hover(QEvent::ToolTip, place, edit().viewport()->mapToGlobal(place));
    QApplication::sendEvent(edit().viewport(), &hover);
    EXPECT_FALSE(QToolTip::text().isEmpty());
    EXPECT_TRUE(status().endsWith(QToolTip::text())) << qPrintable(QToolTip::text());

    // The mark moves with its word until the next check.
    edit().moveCursor(QTextCursor::Start);
    QTest::keyClick(&edit(), Qt::Key_Return);
    EXPECT_EQ(marked(QTextCharFormat::WaveUnderline), QStringList({"4:x"}));

    caretTo("x =");
    QTest::keyClicks(&edit(), "Dim ");
    QTest::keyClick(&edit(), Qt::Key_Delete);
    QTest::keyClicks(&edit(), "x: x");
    EXPECT_TRUE(waitForStatus("No mistakes found."));
    EXPECT_TRUE(marked(QTextCharFormat::WaveUnderline).isEmpty());
}

TEST_F(MacroEditorTest, FindBarFindsForwardsBackwardsAndFromTheOtherEnd)
{
    edit().setMacroText(u"alpha\nBeta\nALPHA\n");
    QTest::keyClick(&edit(), Qt::Key_F, Qt::ControlModifier);
    auto* box = child<QLineEdit>("findText");
    ASSERT_TRUE(box->hasFocus());
    QTest::keyClicks(box, "alpha");
    EXPECT_EQ(edit().textCursor().blockNumber(), 0);
    EXPECT_EQ(edit().textCursor().selectedText(), "alpha");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(edit().textCursor().selectedText(), "ALPHA");
    QTest::keyClick(box, Qt::Key_F3);
    EXPECT_EQ(edit().textCursor().blockNumber(), 0);
    EXPECT_EQ(child<QLabel>("findNote")->text(), "Went on from the other end");
    QTest::keyClick(box, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(edit().textCursor().blockNumber(), 2);
    QTest::mouseClick(child<QCheckBox>("findMatchCase"), Qt::LeftButton, {}, QPoint(8, 8));
    QTest::mouseClick(child<QPushButton>("findNext"), Qt::LeftButton);
    EXPECT_EQ(edit().textCursor().blockNumber(), 0);
    QTest::keyClicks(box, "bet");
    EXPECT_EQ(child<QLabel>("findNote")->text(), "Not found");
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_FALSE(box->isVisible());
    EXPECT_TRUE(edit().hasFocus());
    QTest::keyClick(&edit(), Qt::Key_F3);
    EXPECT_EQ(text(), "alpha\nBeta\nALPHA\n");
}

TEST_F(MacroEditorTest, TextsComeBackWithTheirLineEnds)
{
    struct Row {
        TextView set;
        TextView untouched;
        TextView withAnX;
    };
    const Row rows[] = {
        {u"a\r\nb\r\n\n", u"a\r\nb\r\n\n", u"xa\r\nb\r\n\r\n"},
        {u"a\nb", u"a\nb", u"xa\nb"},
        {u"a\u00A0\u2013b", u"a\u00A0\u2013b", u"xa\u00A0\u2013b"},
        {u"", u"", u"x"},
    };
    for (const Row& row : rows) {
        edit().setMacroText(row.set);
        EXPECT_EQ(edit().macroText(), row.untouched);
        edit().moveCursor(QTextCursor::Start);
        QTest::keyClicks(&edit(), "x");
        EXPECT_EQ(edit().macroText(), row.withAnX);
        QTest::keyClick(&edit(), Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(edit().macroText(), row.untouched);
    }
    edit().setMacroText(u"mine\r\n");
    edit().replaceMacroText(u"default\r\n\n");
    EXPECT_EQ(edit().macroText(), u"default\r\n\n");
    QTest::keyClick(&edit(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit().macroText(), u"mine\r\n");
}

TEST_F(MacroEditorTest, ALongMacroIsCheckedToItsEnd)
{
    Text source = u"Option Explicit\r\nDim x\r\n";
    for (int i = 0; i < 700; ++i)
        source += u"Sub s" + numberText(i)
            + u"()\r\n    If x Then\r\n        x = \"[OutputPath]\" & <Version>\r\n    Else\r\n"
              u"        x = y(1) ' <Filename>\r\n    End If\r\nEnd Sub\r\n";
    edit().setMacroText(source);
    ASSERT_GE(edit().blockCount(), 4900);
    EXPECT_TRUE(waitForStatus("700"));
    edit().moveCursor(QTextCursor::End);
    typeLines({"Sub t()", "z = 1", "End Sub"});
    EXPECT_TRUE(waitForStatus("701"));
}

} // namespace
