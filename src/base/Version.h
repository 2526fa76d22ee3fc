#pragma once

namespace zn {

/// The version of this software as its programs and packages state it: "0.9.0", by the rules of semantic versioning.
/// What the add-in answers a host that asks for its version is another number, which is part of their contract.
const char* softwareVersion();

} // namespace zn
