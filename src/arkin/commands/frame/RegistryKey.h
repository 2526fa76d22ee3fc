#pragma once

#include "arkin/commands/frame/Output.h"

#include "platform/Registry.h"

namespace zn::arkin {

/// The product's own key.
inline constexpr zn::TextView productKey = u"Software\\Zentrel\\Applications\\Arkin Enterprise";

/// A key of the command line: "machine\SOFTWARE\Classes", "user\Software\Arkin"; with `--32` the machine root's
/// 32-bit face.
struct RegistryKey {
    zn::RegistryRoot root = zn::RegistryRoot::Machine;
    zn::RegistryView view = zn::RegistryView::Bits64;
    zn::Text key;
};

/// Raises `StatusError` E_INVALIDARG with a sentence for an unknown root.
RegistryKey parseKey(const std::string& text, bool bits32);
/// A stored value for a person: a number, a text, or bytes in hexadecimal digits.
Json jsonOf(const zn::RegistryValue& value);
std::string shownOf(const zn::RegistryValue& value);

} // namespace zn::arkin
