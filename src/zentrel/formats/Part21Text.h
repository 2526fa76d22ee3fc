#pragma once

#include <cstddef>
#include <deque>
#include <Interface_ParamType.hxx>
#include <optional>
#include <string>
#include <vector>

namespace zn::zentrel {

/// The records of a STEP file's text (ISO 10303-21, clear text encoding) as the kernel's loader wants them: a list in a
/// list is a record of its own in front of the one that holds it, and each part of a complex instance is one.
struct Part21Records {
    struct Parameter {
        const char* value; ///< as it stands in the file, an apostrophe at both ends of a string; "$n" for the n-th list
        Interface_ParamType type;
    };
    struct Record {
        const char* name; ///< "#12"; "$n" for the n-th list in an entity; "#0" in the header and for further parts
        const char* type; ///< "CARTESIAN_POINT"; `listType` for a list without one
        std::size_t parameters;
    };
    static constexpr const char* listType = "/* (SUB) */";

    std::string text;                  ///< what names and values point into, cut up by zero bytes
    std::deque<std::string> listNames; ///< the same for lists
    std::vector<Record> records;
    std::vector<Parameter> parameters; ///< of all records in turn
    std::size_t headRecords = 0;
};

/// What a text holds that has nothing but one header and one data section of well-formed entities. None for any other,
/// sound or not: the kernel's own parser knows scopes and older forms, and what to make of faults.
std::optional<Part21Records> parsePart21(std::string text);

} // namespace zn::zentrel
