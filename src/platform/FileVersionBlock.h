#pragma once

#include <cstdint>

namespace zn {

/// The section of an executable (64-bit ELF, little-endian) in which its version block lies.
inline constexpr char fileVersionSection[] = ".zn_version";

/// The version block of an executable: the marker, then the version's numbers, low byte first. 24 bytes.
struct FileVersionBlock {
    char marker[16];
    std::uint16_t major;
    std::uint16_t minor;
    std::uint16_t build;
    std::uint16_t revision;
};
inline constexpr char fileVersionMarker[16] = "ZN FILE VERSION";

} // namespace zn

/// Gives the program its version block. To be written once, at namespace scope, in a source file of the program
/// itself: inside a static library nobody would ask for the object and the linker would leave it out.
#define ZN_FILE_VERSION(major, minor, build, revision)                                                                 \
    extern "C" {                                                                                                       \
    [[gnu::used, gnu::section(".zn_version")]] extern const ::zn::FileVersionBlock znFileVersionBlock                  \
        = {"ZN FILE VERSION", major, minor, build, revision};                                                          \
    }
