#pragma once

#include "base/Status.h"
#include "base/Text.h"

namespace lexmgr {
class Library;
}

/// The sentence that a person reads for a result code of the vault host: one wording in all windows.
namespace zn {

/// The sentence for a code, in the language of `strings`, or in English without one. A code that the catalogue doesn't
/// know gets the operating system's text, or a sentence with its number if that knows none.
Text errorText(Status code, lexmgr::Library* strings = nullptr);

/// The same for a failure to open the vault's database. Every code but the four for this means: the database failed.
Text databaseErrorText(Status code, lexmgr::Library* strings = nullptr);

} // namespace zn
