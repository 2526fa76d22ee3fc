#pragma once

#include "base/Object.h"
#include "base/Status.h"
#include "base/Text.h"

#include <cstdint>
#include <memory>
#include <variant>
#include <vector>

namespace zn {

/// The automation type numbers. `Array` is a flag on an element type.
enum class ValueType : std::uint16_t {
    Empty = 0,
    Null = 1,
    Int16 = 2,
    Int32 = 3,
    Float32 = 4,
    Float64 = 5,
    Currency = 6,
    Date = 7,
    String = 8,
    Dispatch = 9,
    Error = 10,
    Boolean = 11,
    Variant = 12,
    UInt8 = 17,
    Int64 = 20,
    Array = 0x2000,
};

struct NullValue {
    bool operator==(const NullValue&) const = default;
};
/// 0 is false; true is written as -1.
struct BooleanValue {
    std::int16_t bits = 0;
    bool operator==(const BooleanValue&) const = default;
};
/// Fixed point with four decimals.
struct CurrencyValue {
    std::int64_t tenThousandths = 0;
    bool operator==(const CurrencyValue&) const = default;
};
/// Days since 30 December 1899, local time; the fraction is the time of day. 0.0 means no date.
struct DateValue {
    double days = 0.0;
    bool operator==(const DateValue&) const = default;
};
struct ErrorValue {
    Status status = 0;
    bool operator==(const ErrorValue&) const = default;
};

class Value;

/// An automation array. Elements are stored with the first subscript running fastest.
/// Copying a `Value` that holds an array shares it; `Value::deepCopy` makes one's own.
struct ValueArray {
    struct Bound {
        std::int32_t lower = 0;
        std::uint32_t count = 0;
    };
    ValueType elementType = ValueType::Variant;
    std::vector<Bound> bounds;
    std::vector<Value> elements;
};
using ArrayRef = std::shared_ptr<ValueArray>;

/// A typed automation value.
class Value {
public:
    using Storage = std::variant<std::monostate, NullValue, std::int16_t, std::int32_t, float, double, CurrencyValue,
        DateValue, Text, ObjectRef, ErrorValue, BooleanValue, std::uint8_t, std::int64_t, ArrayRef>;

    Value() = default;
    // Compiled once: in each source that copies values they would be a good part of what it costs to build.
    Value(const Value& other);
    Value& operator=(const Value& other);
    Value(Value&& other) noexcept = default;
    Value& operator=(Value&& other) noexcept = default;
    ~Value() = default;
    Value(NullValue v)
        : m_storage(v)
    {
    }
    Value(std::int16_t v)
        : m_storage(v)
    {
    }
    Value(std::int32_t v)
        : m_storage(v)
    {
    }
    Value(std::int64_t v)
        : m_storage(v)
    {
    }
    Value(std::uint8_t v)
        : m_storage(v)
    {
    }
    Value(float v)
        : m_storage(v)
    {
    }
    Value(double v)
        : m_storage(v)
    {
    }
    Value(CurrencyValue v)
        : m_storage(v)
    {
    }
    Value(DateValue v)
        : m_storage(v)
    {
    }
    Value(ErrorValue v)
        : m_storage(v)
    {
    }
    Value(BooleanValue v)
        : m_storage(v)
    {
    }
    Value(bool v)
        : m_storage(BooleanValue{static_cast<std::int16_t>(v ? -1 : 0)})
    {
    }
    Value(Text v)
        : m_storage(std::move(v))
    {
    }
    Value(const char16_t* v)
        : m_storage(Text(v))
    {
    }
    Value(ObjectRef v)
        : m_storage(std::move(v))
    {
    }
    template <class T>
    Value(const std::shared_ptr<T>& v) requires std::is_base_of_v<Object, T> : m_storage(ObjectRef(v))
    {
    }
    Value(ArrayRef v)
        : m_storage(std::move(v))
    {
    }

    /// A one-dimensional array with lower bound 0.
    static Value arrayOf(std::vector<Value> elements, ValueType elementType = ValueType::Variant);

    ValueType type() const;
    bool isEmpty() const { return type() == ValueType::Empty; }
    bool isArray() const { return std::holds_alternative<ArrayRef>(m_storage); }

    /// The payload when the value is of exactly that type, else null.
    template <class T> const T* get() const { return std::get_if<T>(&m_storage); }
    template <class T> T* get() { return std::get_if<T>(&m_storage); }

    const Storage& storage() const { return m_storage; }

    /// Converts by the automation rules. Raises `DISP_E_TYPEMISMATCH` or `DISP_E_OVERFLOW`.
    Value changedTo(ValueType type) const;

    // The typed reads: a value of the wanted type as it is, any other changed to it; the failure is raised.
    bool toBool() const;          ///< any value other than 0 is true
    std::int32_t toInt32() const; ///< fractions are rounded half to even
    double toDouble() const;
    Text toText() const;        ///< booleans as "-1" and "0", floats with up to 15 (or 7) digits
    ObjectRef toObject() const; ///< null for an object value that is nothing; others are a type mismatch

    Value deepCopy() const;

    /// Same type and same payload; arrays by identity.
    bool operator==(const Value& other) const;

private:
    Storage m_storage;
};

/// Reads a number as automation does: blanks around it, sign, digits, point, exponent; also &H and &O forms.
/// False if the text isn't a number.
bool parseNumber(TextView text, double& number);

/// Shortest general form with at most `digits` significant digits, as automation shows floats: 0.1, 1E+20, 3.
Text floatText(double number, int digits);

} // namespace zn
