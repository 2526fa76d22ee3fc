#pragma once

#include "base/Dispatch.h"

#include <initializer_list>
#include <span>
#include <unordered_map>

/// The object model of the CAD application. Its objects are called by name, by macros inside the process and by a
/// client outside; which members a class has stands in its table of members.
namespace zn::zentrel {

using zn::ArrayRef;
using zn::DispatchObject;
using zn::DispatchRef;
using zn::MemberCall;
using zn::MemberUse;
using zn::ObjectRef;
using zn::Status;
using zn::StatusError;
using zn::Text;
using zn::TextView;
using zn::Value;

class ScriptObject;

/// The arguments of one call in the order of the member's parameters, whether they were given by place or by name.
/// Reads change types by the rules of automation and raise `DISP_E_TYPEMISMATCH` where that can't be.
class Arguments {
public:
    /// Null stands for an argument that was left out; the others point into the call.
    explicit Arguments(std::vector<Value*> values)
        : m_values(std::move(values))
    {
    }

    /// Whether the caller gave this argument; optional ones may be left out.
    bool given(std::size_t index) const { return index < m_values.size() && m_values[index] != nullptr; }
    /// Empty if it was left out.
    Value value(std::size_t index) const { return given(index) ? *m_values[index] : Value(); }
    Text text(std::size_t index) const { return value(index).toText(); }
    std::int32_t integer(std::size_t index) const { return value(index).toInt32(); }
    bool boolean(std::size_t index) const { return value(index).toBool(); }
    /// The object, as the class that is wanted; null for nothing or another class.
    template <class T> std::shared_ptr<T> object(std::size_t index) const
    {
        return given(index) && m_values[index]->type() == zn::ValueType::Dispatch
            ? zn::query<T>(m_values[index]->toObject())
            : nullptr;
    }
    /// A list of texts; a single text counts as a list of one, nothing as none.
    std::vector<Text> texts(std::size_t index) const;

    /// Gives a by-reference result.
    void set(std::size_t index, Value value)
    {
        if (given(index))
            *m_values[index] = std::move(value);
    }

private:
    std::vector<Value*> m_values;
};

/// One row of a class's table of members.
struct Member {
    const char16_t* name;
    MemberUse use; ///< `Call` for methods and reads of properties, `Put` for writes
    /// Names of the parameters with blanks between them; those in brackets, at the end, may be left out.
    const char16_t* parameters;
    Value (*function)(ScriptObject& self, Arguments& arguments);
};

namespace detail {
template <class Function> struct MemberClass;
template <class Class> struct MemberClass<Value (Class::*)(Arguments&)> {
    using Type = Class;
};
} // namespace detail

/// Makes a member function fit into a row of a table.
template <auto Function> Value member(ScriptObject& self, Arguments& arguments)
{
    return (static_cast<typename detail::MemberClass<decltype(Function)>::Type&>(self).*Function)(arguments);
}

/// The members of a class with those of its base class, found by name.
class MemberTable {
public:
    explicit MemberTable(std::span<const Member> own, const MemberTable* base = nullptr);

    struct Entry {
        const Member* member = nullptr;
        std::vector<Text> parameters; ///< folded
        std::size_t required = 0;
    };
    /// Null if there is no such member for this use.
    const Entry* find(TextView name, MemberUse use) const;
    /// Whether the class has the name at all, for this or another use.
    bool hasName(TextView name) const;

private:
    std::unordered_map<Text, Entry> m_calls;
    std::unordered_map<Text, Entry> m_puts;
};

/// An object of the object model.
class ScriptObject : public DispatchObject, public std::enable_shared_from_this<ScriptObject> {
public:
    /// Finds the member, checks the number of arguments and calls it.
    Value invoke(MemberCall& call) final;

protected:
    virtual const MemberTable& members() const = 0;
};

/// An array of texts as members return it.
Value textArray(const std::vector<Text>& texts);

} // namespace zn::zentrel
