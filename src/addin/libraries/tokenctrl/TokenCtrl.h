#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class QWidget;

/// The library of the token edit: an edit box that knows a set of patterns and shows each as one object. It is a file
/// of its own, "TokenCtrl.dll" in the product's folder, which is loaded when the first box is made; this header is all
/// that its users see of it.
///
/// Everything here runs on the thread of the user interface. Nothing raises an exception but exhausted memory.
namespace tokenctrl {

class TokenBox;

/// Entries of a caller's own that the menu would get on top of the patterns. Nobody fills it so far.
class TokenBoxParentMenu;

/// Whoever wants to know of changes.
class TokenBoxCallback {
public:
    /// After each change of the text, by whatever way: typing, the menu, undo, `mvSetText`. It may change the text
    /// itself with `mvSetText`. It must not raise: it is called from event handlers.
    virtual void OnTokenTextChanged(TokenBox& box) = 0;

protected:
    ~TokenBoxCallback() = default;
};

/// One token edit. In its plain text a token is its pattern, such as "<Path>" or "%Number%".
class TokenBox {
public:
    /// The window may be destroyed before its box, and the box before its window.
    virtual ~TokenBox() = default;

    /// Puts the edit into `place`, an empty widget of the dialog, which passes its focus on. A label whose buddy is
    /// `place`, or its accessible name, names the edit.
    virtual void mvDDX_Control(QWidget* place) = 0;

    /// Makes a pattern known, before any text that holds it. `displayText` is what its token shows; `secondText` is
    /// shown when the pointer rests on the token, none for the pattern. `menuPath` is the place in the menu, its levels
    /// separated by backslashes; none keeps the pattern out of the menu. A pattern that is known already gets the new
    /// texts, and a further entry in the menu.
    virtual void mvAddPattern(const char16_t* pattern, bool isVariable, const char16_t* displayText,
        const char16_t* secondText, const char16_t* menuPath)
        = 0;

    /// Who is told of changes from now on; none for nobody. Must outlive the box or take itself back.
    virtual void mvRegisterCallback(TokenBoxCallback* callback) = 0;

    /// Replaces the text; the patterns in it turn into tokens, line breaks into blanks, and the callback runs. What was
    /// typed before can't be undone into the new text, unless the callback itself sets the text: then the two changes
    /// are one for undo.
    virtual void mvSetText(std::u16string_view text) = 0;

    /// The plain text, tokens as their patterns. Empty when the window is gone.
    virtual std::u16string moGetText() const = 0;

    /// Shows the menu under the button (none: under the edit) and returns at once; the pattern that a person chooses is
    /// put at the caret, in place of what is selected. False if there is nothing to show. `parentMenu` is none.
    /// A dialog with a menu of its own inserts with the edit's `QTextEdit::insertPlainText`.
    virtual bool mbShowMenu(QWidget* button, TokenBoxParentMenu* parentMenu) = 0;
};

/// Name and type of the one function that the library exports (C linkage), the constructor of a box. `value` is 0.
/// The caller owns the box and keeps the library loaded for longer.
inline constexpr const char* libraryEntry = "tokenctrlTokenBox";
using LibraryEntry = TokenBox* (*)(std::int32_t value);

} // namespace tokenctrl
