#pragma once

#include "base/Value.h"

#include <nlohmann/json_fwd.hpp>
#include <stdexcept>

namespace zn::automation {

using Json = nlohmann::json;

/// The peer sent something that is no message of the protocol. The connection can't go on.
class ProtocolError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What stands for an object on the wire; the two sides of a connection differ in it.
class ObjectCodec {
public:
    virtual ~ObjectCodec() = default;

    /// The JSON form of an object that isn't null. Raises `StatusError` for an object that can't travel.
    virtual Json encodeObject(const ObjectRef& object) = 0;
    /// The reverse; raises `ProtocolError` for an object that was never sent.
    virtual ObjectRef decodeObject(const Json& form) = 0;
};

/// The JSON form of a value. Every type survives exactly: integers of 64 bits, floats with their last bit,
/// not-a-number, and texts with lone surrogate halves. docs/automation.md has the table of forms.
Json encodeValue(const Value& value, ObjectCodec& objects);
/// The reverse. Raises `ProtocolError` for anything that `encodeValue` never writes.
Value decodeValue(const Json& form, ObjectCodec& objects);

Json encodeText(TextView text);
Text decodeText(const Json& form);

/// A member of a JSON object; raises `ProtocolError` naming it if it is missing or `parent` is no object.
const Json& member(const Json& parent, const char* name);
/// An integer within the limits of `Integer`; raises `ProtocolError` otherwise.
template <class Integer> Integer integer(const Json& form);

} // namespace zn::automation
