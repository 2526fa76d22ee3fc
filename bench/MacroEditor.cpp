// Typing at the end of a macro of about 5,000 lines against one of seven: the editor's work a key must not grow with
// the macro.

#include "addin/pages/script/MacroEditor.h"
#include "addin/pages/script/MacroEdit.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <QApplication>
#include <QTest>

namespace {

using namespace zn;

constexpr int keys = 100;

Text macroOf(int procedures)
{
    Text source = u"Option Explicit\r\nDim x\r\n";
    for (int i = 0; i < procedures; ++i)
        source += u"Sub s" + numberText(i)
            + u"()\r\n    If x Then\r\n        x = \"[OutputPath]\" & <Version>\r\n    Else\r\n"
              u"        x = y(1) ' <Filename>\r\n    End If\r\nEnd Sub\r\n";
    return source;
}

void start()
{
    static int count = 1;
    static char name[] = "bench";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!qApp)
        new QApplication(count, arguments); // until the process ends
}

void TypingAMacro(benchmark::State& state)
{
    start();
    MacroEditor editor;
    editor.resize(700, 500);
    editor.show();
    editor.edit().setMacroText(macroOf(static_cast<int>(state.range(0))));
    editor.edit().moveCursor(QTextCursor::End);
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        for (int i = 0; i < keys; ++i) {
            QTest::keyClick(&editor.edit(), i % 10 == 9 ? Qt::Key_Return : Qt::Key_X);
            QApplication::processEvents();
        }
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        state.SetIterationTime(taken.count());
        state.counters["ms_a_key"] = 1000 * taken.count() / keys;
    }
}
BENCHMARK(TypingAMacro)->Arg(1)->Arg(700)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

} // namespace
