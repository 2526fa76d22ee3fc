#pragma once

#include <string>

namespace zn::arkin {

/// A random identifier that nobody else has: "1b4e28ba-2fa1-41d2-883f-0016d3cca427".
std::string newUuid();

} // namespace zn::arkin
