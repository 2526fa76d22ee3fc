#pragma once

#include "arkin/store/Vault.h"

namespace zn::arkin {

/// One thing in which two versions of a file differ. An empty side doesn't have it.
struct Difference {
    enum class Kind {
        Content,   ///< the bytes; the sides are their sizes
        Part,      ///< a configuration or sheet that a document tells
        Card,      ///< a value; `name` is the variable, with the configuration in brackets unless it is the file's own
        Measure,   ///< what the CAD application measures; the sides are numbers of `unit`
        Body,      ///< bodies of this name; the sides are how many there are
        Reference, ///< to the file `name`; the sides are the versions to which is referred
    };
    Kind kind = Kind::Content;
    zn::Text name;
    zn::Text before;
    zn::Text after;
    zn::Text unit = {}; ///< of a measure
    bool operator==(const Difference&) const = default;
};

/// All of them, by kind and name. What contents look like isn't compared. Raises E_ARK_NO_SUCH_VERSION.
std::vector<Difference> differencesOf(
    Vault& vault, std::int32_t fileId, std::int32_t beforeVersion, std::int32_t afterVersion);

} // namespace zn::arkin
