#pragma once

#include "base/Dispatch.h"

#include <optional>

namespace zn::language {

/// Texts to which a macro holds pointers, made by its `StrPtr`. A pointer stays good until the machine's end.
class TextPointers {
public:
    virtual ~TextPointers() = default;
    /// Null for a number that is no such pointer.
    virtual const Text* textAt(std::int64_t pointer) const = 0;
};

/// One call of a function that the macro declared (`Declare Function … Lib …`).
struct DeclaredCall {
    Text library; ///< as written: "shell32", "shlwapi.dll"
    Text entry;   ///< the alias, or the declared name if there is none
    /// Converted to the declared types. By-reference results are written back into the element.
    std::vector<Value> arguments;
    const TextPointers& pointers;

    /// The text that argument `index` is or points to. None for a null pointer.
    /// Raises `E_INVALIDARG` for a number that points to nothing.
    std::optional<Text> text(std::size_t index) const;
};

struct MessageBox {
    Text prompt;
    Text title;
    std::int32_t buttons = 0; ///< as the macro gives them: buttons, icon and default in one number
};

struct InputBox {
    Text prompt;
    Text title;
    Text defaultAnswer;
};

class LineWatcher;

/// What a running macro needs from the application around it. All calls come on the thread that runs the macro.
/// A failure is raised as a `StatusError`, which the macro can handle: the statuses of automation turn into the
/// language's numbers (`DISP_E_MEMBERNOTFOUND` 438, `DISP_E_TYPEMISMATCH` 13 …), any other is the number itself.
///
/// About objects: the callee of `DispatchObject::invoke` writes by-reference results into the call's arguments and
/// leaves every other argument as it was; the machine copies changed ones back into the macro's variables.
/// `For Each` asks an object for the member "_NewEnum", which answers with an array of the elements.
class Host {
public:
    virtual ~Host() = default;

    /// Answers a global name of the library: the object ("Application") or the function's result.
    virtual Value global(MemberCall& call) = 0;
    /// `CreateObject` and `New`. Null if there is no such class. The language's own classes
    /// ("Scripting.FileSystemObject", "Scripting.Dictionary") are not asked for.
    virtual DispatchRef createObject(const Text& programId) = 0;
    /// Raises `DISP_E_MEMBERNOTFOUND` for a function that isn't provided.
    virtual Value callDeclared(DeclaredCall& call) = 0;
    /// One line of `Debug.Print`, without a line end.
    virtual void debugPrint(const Text& line) = 0;
    /// The answer: 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No.
    virtual std::int32_t messageBox(const MessageBox& box) = 0;
    /// What a person types, or the default answer where nobody can: that is what it answers by itself.
    virtual Text inputBox(const InputBox& box) { return box.defaultAnswer; }
    /// Asked every few hundred statements: true ends the macro, which can't handle that. Must be quick.
    virtual bool stopRequested() { return false; }
    /// Who sees each line run; null for nobody. Asked once for a machine, which it outlives.
    virtual LineWatcher* watcher() { return nullptr; }
    /// Local time as a day count, with fractions of a second.
    virtual double now();
    /// An environment variable, empty if there is none.
    virtual Text environment(const Text& name);
};

} // namespace zn::language
