#pragma once

#include <functional>
#include <QString>

namespace zn {

/// The words of the macro editor. "%1" and "%2" stand for numbers or texts.
struct MacroEditorTexts {
    QString leaveHint;
    QString find;
    QString next;
    QString previous;
    QString matchCase;
    QString closeFind;
    QString notFound;
    QString wrapped;
    QString checking;
    QString noProblems;
    QString problem;
    QString severalProblems;
    QString notChecked;
};

/// The texts as `lookUp` gives them for their number and English text.
MacroEditorTexts macroEditorTexts(const std::function<QString(int number, const char16_t* english)>& lookUp);
/// The same in English.
MacroEditorTexts englishEditorTexts();

} // namespace zn
