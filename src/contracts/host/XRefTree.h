#pragma once

#include "base/Object.h"
#include "base/Status.h"
#include "base/Text.h"

#include <cstdint>
#include <memory>
#include <vector>

/// The vault host's tree of files and their references. An add-in makes the control through the class store, feeds it
/// rows and answers its commands; drawing, expanding, keys and icons are the host's. Everything happens on the user
/// interface thread. Window handles are the toolkit's, as in `ArkCmd::parentWindow`.
namespace zn {

/// A row at one place of the tree. The control asks for rows when they come into being, and for their texts when they
/// are painted, so answers must be cheap.
class IFileRefItem : public Object {
public:
    virtual Status GetName(Text& name) = 0;
    /// The folder's path, without a trailing separator.
    virtual Status GetPath(Text& path) = 0;
    virtual Status GetConfiguration(Text& configuration) = 0;
    virtual Status GetChildCount(std::int32_t& count) = 0;
    /// Makes the row of a child, counted from 0.
    virtual Status GetChild(std::int32_t index, std::shared_ptr<IFileRefItem>& child) = 0;
};

enum class FileRefCheck : std::int32_t {
    NoBox, ///< the row can't be ticked, and its texts are greyed
    Off,
    On,
};

// What else a row may tell; its object may have any of these interfaces too.

/// What a row shows beside its file. A row without this interface has no box.
class IFileRefItem2 {
public:
    virtual ~IFileRefItem2() = default;
    virtual Status GetCheck(FileRefCheck& check) = 0;
    /// What is to say about the file, such as why it can't be ticked; mostly empty.
    virtual Status GetStateText(Text& text) = 0;
    /// 0 stands for the latest.
    virtual Status GetVersion(std::int32_t& version) = 0;
};

/// Rows that remember how they were shown. Asked once, when the row comes into being.
class IFileRefItem3 {
public:
    virtual ~IFileRefItem3() = default;
    virtual Status GetExpanded(bool& expanded) = 0;
};

class IFileRefItemIcon {
public:
    virtual ~IFileRefItemIcon() = default;
    /// The extension of the file type whose icon the row bears, with its dot. Asked when the row is painted.
    virtual Status GetIconType(Text& extension) = 0;
};

/// What the user does in the tree.
class IFileRefCmd {
public:
    virtual ~IFileRefCmd() = default;
    /// The user ticks or unticks a row that has a box. Afterwards all rows are painted again, since other rows may
    /// stand for the same file.
    virtual Status OnCheck(IFileRefItem& row, bool checked) = 0;
    virtual Status OnExpand(IFileRefItem& row, bool expanded) = 0;
};

class IXRefTreeListCtrl : public Object {
public:
    /// Makes the control's window as a child of `parentWindow`, with a name for screen readers. `commands` outlives the
    /// control. The window goes with the object, or with its parent if that goes first. A control without a window
    /// (no call, or a failed one) answers every other call with `E_POINTER`.
    virtual Status Create(std::int32_t parentWindow, TextView name, IFileRefCmd& commands, std::int32_t& window) = 0;
    /// Replaces all rows. Those that say so are expanded at once, and their children likewise.
    virtual Status SetRows(const std::vector<std::shared_ptr<IFileRefItem>>& roots) = 0;
    /// Paints all rows again.
    virtual Status Refresh() = 0;
};

/// Under this program identifier the class store has the control.
inline constexpr const char16_t* xRefTreeProgramId = u"Arkin.XRefTreeListCtrl";

} // namespace zn
