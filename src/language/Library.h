#pragma once

#include "base/Value.h"

#include <optional>

namespace zn::language {

enum class LibraryType { Unknown, Class, Enumeration };

/// What a macro's source may name without declaring it: the type library of the application that runs it.
/// The compiler asks; nothing is called. All names are compared without regard to case.
class Library {
public:
    virtual ~Library() = default;

    /// The value of a named constant or of a member of an enumeration ("znDocPART").
    virtual std::optional<Value> constant(TextView name) const = 0;

    /// What a name behind `As` stands for, with or without the library's own name before it
    /// ("Zentrel.ModelDoc2", "ModelDoc2", "znDocumentTypes_e").
    virtual LibraryType typeNamed(TextView name) const = 0;

    /// Whether the name is a global object or function that `Host::global` answers ("Application").
    virtual bool hasGlobal(TextView name) const = 0;
};

} // namespace zn::language
