#pragma once

#include <QIcon>

/// The library of icons that several products share. It is a file of its own, "FlowIcons.dll" in the product's folder;
/// this header is all that its users see of it.
namespace flowicons {

enum class Picture {
    Folder = 1,
    Pdf3d = 2, ///< the 3D PDF format
};

class Library {
public:
    virtual ~Library() = default;
    /// An icon for light and dark palettes, sharp at every size.
    virtual QIcon icon(Picture picture) const = 0;
};

/// Name and type of the one function that the library exports (C linkage). The caller owns the object and keeps the
/// library loaded for longer, and for longer than the icons.
inline constexpr const char* libraryEntry = "flowiconsLibrary";
using LibraryEntry = Library* (*)();

} // namespace flowicons
