#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QWidget;

/// The library of looked-up texts and of the windows that show them. It is a file of its own, "LexMgr.dll" in the
/// product's folder, which is loaded when the first window opens; this header is all that its users see of it.
///
/// Everything here runs on the thread of the user interface. Nothing raises an exception but exhausted memory.
namespace lexmgr {

/// Show commands of `mvShowGroup` and `mbShowCtrl`.
inline constexpr int showHidden = 0;
inline constexpr int showNormal = 5;

/// Anchor bits of `mvFixCtrl`: the edges of the window to which a control keeps its distance.
inline constexpr int anchorLeft = 1;
inline constexpr int anchorTop = 2;
inline constexpr int anchorRight = 4;
inline constexpr int anchorBottom = 8;

/// What an image is for; decides how it grows with the screen.
enum class e_arkImageUseType {
    Icon = 1,    ///< grows in steps in which icons are drawn: 16, 24, 32, 48 pixels
    Toolbar = 2, ///< grows in the same steps
    Picture = 3, ///< grows with the screen
};

/// In pixels of the window's client area.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// What a window may decide for itself. A window that decides nothing passes none to `Library::makeWindow`.
class WindowClient {
public:
    virtual ~WindowClient() = default;
    /// The text that F1 or "What's this" shows for a control; an empty one stands for its tool tip.
    virtual std::u16string mbGetHelpString(int /*control*/) { return {}; }
    /// Shows a message of the library (a help topic that isn't there) itself and returns true, or leaves the message
    /// box to the library.
    virtual bool mvMsgBox(std::u16string_view /*text*/) { return false; }
    /// Asked whenever a tool tip is about to appear.
    virtual bool mbPermitToolTip(int /*control*/) { return true; }
    /// The window is being destroyed; the library won't ask any more.
    virtual void mvDeInitialize() { }
};

/// One dialog or page: its translated texts, its groups of controls, its anchors and tool tips. Controls are known by
/// their number. An operation on a number or group that nobody registered does nothing and returns false.
///
/// The window must not outlive the `Library`. Controls and the dialog itself may be destroyed before it.
class Window {
public:
    virtual ~Window() = default;

    /// Makes a control known, before `mbInitLexWnd`. `defaultText` is the English text of a label, button or group box;
    /// for other controls it is the name that a screen reader says. Empty: the control has no text to look up.
    virtual void registerControl(int control, QWidget* widget, std::u16string_view defaultText) = 0;

    /// Looks the text of each control up: section `name`, string number the control's number, in the default string
    /// file. `title` is the English title of the window, whose number is 0; empty for a page without one. False
    /// without a window or a name.
    virtual bool mbInitLexWnd(QWidget* window, std::u16string_view name, std::u16string_view title = {}) = 0;

    /// Adds a control to a numbered group. A control may be in several: it shows if it is shown itself and each of
    /// its groups is, and is enabled likewise.
    virtual void mvAddControl(int group, int control) = 0;
    /// The same for a widget without a number, such as a page's part with a layout of its own.
    virtual void mvAddControl(int group, QWidget* widget) = 0;
    virtual void mvShowGroup(int group, int showCommand) = 0;
    virtual void mvEnableGroup(int group, bool enable) = 0;
    /// Moves the controls of a group. A control that a layout places stays where the layout wants it.
    virtual void mvMoveGroup(int group, int dx, int dy) = 0;

    virtual bool mbShowCtrl(int control, int showCommand) = 0;
    virtual bool mbEnableCtrl(int control, bool enable) = 0;
    /// Where the control stands in the window; all zero for an unknown one.
    virtual Rect moGetCtrlPos(int control) const = 0;

    /// Keeps the control at its present distance from the edges that the anchor bits name. A control that a layout
    /// places needs no anchor and gets none.
    virtual void mvFixCtrl(int control, int anchorBits) = 0;
    /// Moves the anchored controls for the window's present size; to be called when it has changed.
    virtual void mvUpdateFixedCtrls() = 0;

    /// A text that is shown when the pointer rests on the control.
    virtual bool mbAddToolTip(int control, std::u16string_view text) = 0;
};

/// Sizes of images on the present screen.
class CDPIHelper {
public:
    virtual ~CDPIHelper() = default;
    /// Edge in pixels of an image of a given use whose edge is `size` at 96 dots per inch.
    virtual int getDesiredBitmapImageSize(e_arkImageUseType useType, int size) const = 0;
    /// A horizontal distance of `value` pixels at 96 dots per inch, in pixels of this screen.
    virtual int scaleX(int value) const = 0;
};

/// One text that was asked for.
struct Lookup {
    int id = 0;
    std::u16string_view section;
    std::u16string_view file;
    std::u16string_view defaultText;
    bool found = false; ///< the string file has it; otherwise the default text was returned
};

class Library {
public:
    virtual ~Library() = default;

    /// The text of number `id` of `section` in string file `file`, or `defaultText` if the language has no such entry.
    /// An empty or null file stands for the default one. The text is valid as long as the library, a default text as
    /// long as the caller's.
    virtual const char16_t* TSS_internal(
        int id, const char16_t* section, const char16_t* file, const char16_t* defaultText)
        = 0;

    /// The stack of default string files. Each push is matched by a pop; a pop too many does nothing.
    virtual void gvPushDefaultFile(std::u16string_view file) = 0;
    virtual void gvPopDefaultFile() = 0;

    /// `client`, if any, must outlive the window.
    virtual std::unique_ptr<Window> makeWindow(WindowClient* client = nullptr) = 0;

    /// Opens the help of `file` at a topic. A topic that isn't there opens the first page; help that isn't installed
    /// says so in a message box over `parent`, and the result is false. `command` is 0 for a topic, 1 for the contents.
    virtual bool mzbShowHelp(QWidget* parent, std::u16string_view topic, std::u16string_view file, int command = 0) = 0;

    /// `CDPIHelper::get`: belongs to the library.
    virtual CDPIHelper& dpi() = 0;
    /// `CDPIHelper::deleteInstance`: the next `dpi` measures the screen again.
    virtual void deleteDpi() = 0;

    /// What was wrong with the string files read so far, a sentence each for a person, naming file and line. Each
    /// sentence is handed out once.
    virtual std::vector<std::u16string> takeProblems() = 0;

    /// Calls `observer` for every text looked up from now on: how a translation is compared with what the windows ask.
    virtual void observe(std::function<void(const Lookup&)> observer) = 0;
};

/// Where the texts come from. Paths are the machine's own.
struct Settings {
    /// Has a folder for each language: <folder>/DE/ZNTaskAddIn.lan.
    std::filesystem::path stringFolder;
    /// Language code, such as "DE". Text without a string file for it is English.
    std::string language;
    /// Has a folder for each help file: <folder>/ZNTaskAddIn/<topic>.html.
    std::filesystem::path helpFolder;
};

/// Name and type of the one function that the library exports (C linkage). The caller owns the object that it returns
/// and keeps the library loaded for longer.
inline constexpr const char* libraryEntry = "lexmgrLibrary";
using LibraryEntry = Library* (*)(const Settings&);

} // namespace lexmgr
