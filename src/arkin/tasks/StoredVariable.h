#pragma once

#include "base/Value.h"

#include <map>
#include <string>

namespace zn::arkin {

/// A value as the database keeps it: its automation type number and its text.
struct StoredVariable {
    std::int32_t type = 0;
    std::string text;
};

/// Task variables hold integers, booleans, floats and texts. A value of another type is kept as the text that
/// automation makes of it; one that has no text raises `DISP_E_TYPEMISMATCH`.
StoredVariable toStoredVariable(const zn::Value& value);
/// Raises `StatusError` E_ARK_DATABASE for a type number that `toStoredVariable` never gives.
zn::Value fromStoredVariable(const StoredVariable& stored);

/// Variables by name, compared exactly.
using Variables = std::map<zn::Text, zn::Value>;

} // namespace zn::arkin
