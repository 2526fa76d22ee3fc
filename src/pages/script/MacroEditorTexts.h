#pragma once

#include <QString>

namespace zn {

/// The words of the macro editor, in English until its owner looks them up. "%1" and "%2" stand for numbers or texts.
struct MacroEditorTexts {
    QString editorName = QStringLiteral("Macro");
    QString leaveHint = QStringLiteral("Ctrl+Tab leaves the editor, Ctrl+F finds text.");
    QString find = QStringLiteral("&Find:");
    QString next = QStringLiteral("&Next");
    QString previous = QStringLiteral("&Previous");
    QString matchCase = QStringLiteral("&Match case");
    QString close = QStringLiteral("Close the find bar");
    QString notFound = QStringLiteral("Not found");
    QString wrapped = QStringLiteral("Went on from the other end");
    QString checking = QStringLiteral("Checking…");
    QString noProblems = QStringLiteral("No mistakes found.");
    QString problem = QStringLiteral("Line %1: %2");
    QString moreProblems = QStringLiteral("(%1 mistakes)");
    QString notChecked = QStringLiteral("The macro could not be checked. It can be saved all the same.");
};

} // namespace zn
