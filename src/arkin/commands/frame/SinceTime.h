#pragma once

#include <cstdint>
#include <string>

namespace zn::arkin {

/// A time in the past as a person gives it, in local time: "today" and "yesterday" (from midnight on), "90m", "12h" or
/// "7d" before now, "2026-11-22" or "2026-11-22 18:30". Unix time in seconds. Raises `StatusError` E_INVALIDARG.
std::int64_t sinceTime(const std::string& text, std::int64_t now);

} // namespace zn::arkin
