#include "addin/pages/script/MacroEditorTexts.h"

namespace zn {

namespace {

struct TextRow {
    QString MacroEditorTexts::*text;
    int number;
    const char16_t* english;
};

constexpr TextRow rows[] = {
    {&MacroEditorTexts::leaveHint, 1001,
        u"Ctrl+Tab leaves the macro, Ctrl+F finds text in it, F8 goes to the next mistake."},
    {&MacroEditorTexts::find, 1002, u"&Find:"},
    {&MacroEditorTexts::next, 1003, u"&Next"},
    {&MacroEditorTexts::previous, 1004, u"&Previous"},
    {&MacroEditorTexts::matchCase, 1005, u"&Match case"},
    {&MacroEditorTexts::closeFind, 1006, u"Close the find bar"},
    {&MacroEditorTexts::notFound, 1007, u"Not found"},
    {&MacroEditorTexts::wrapped, 1008, u"Went on from the other end"},
    {&MacroEditorTexts::checking, 1009, u"Checking the macro..."},
    {&MacroEditorTexts::noProblems, 1010, u"No mistakes found."},
    {&MacroEditorTexts::problem, 1011, u"Line %1: %2"},
    {&MacroEditorTexts::severalProblems, 1012, u"(%1 mistakes)"},
    {&MacroEditorTexts::notChecked, 1013, u"The macro could not be checked. It can be saved all the same."},
};

} // namespace

MacroEditorTexts macroEditorTexts(const std::function<QString(int, const char16_t*)>& lookUp)
{
    MacroEditorTexts texts;
    for (const TextRow& row : rows)
        texts.*row.text = lookUp(row.number, row.english);
    return texts;
}

MacroEditorTexts englishEditorTexts()
{
    return macroEditorTexts([](int, const char16_t* english) { return QString::fromUtf16(english); });
}

} // namespace zn
