#pragma once

#include <memory>

namespace zn {

/// Root of every object that crosses a host's border. An automation object is a
/// `std::shared_ptr<Object>`; which interfaces it has is asked with `query`.
class Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;
};

using ObjectRef = std::shared_ptr<Object>;

/// Asks an object for one of its interfaces. Null when `object` is null or has no such interface.
template <class Interface, class From> std::shared_ptr<Interface> query(const std::shared_ptr<From>& object)
{
    return std::dynamic_pointer_cast<Interface>(object);
}

} // namespace zn
