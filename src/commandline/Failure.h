#pragma once

#include <string>

namespace zn::commandline {

/// Tells a failure on the error stream: "arkin: The …", or as JSON in one line, {"error": "The …", "exitCode": 1}. What
/// a command prints stays by itself on the other stream.
void tellFailure(const std::string& program, const std::string& sentence, int exitCode, bool json);

} // namespace zn::commandline
