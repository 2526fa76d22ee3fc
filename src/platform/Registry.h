#pragma once

#include "base/Text.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace zn {

enum class RegistryRoot { Machine, User };

/// Which of the machine root's two faces is meant. Keys of the machine root differ between the views;
/// the user root has one face only and ignores the view.
enum class RegistryView { Bits64, Bits32 };

/// The type numbers of registry values that the system reads and writes.
enum class RegistryType : std::uint32_t {
    String = 1,
    ExpandString = 2,
    Binary = 3,
    Number = 4,          ///< 32-bit, low byte first
    NumberBigEndian = 5, ///< 32-bit, high byte first
};

/// One stored value: its type and its bytes. Texts are UTF-16, low byte first, with their terminator.
struct RegistryValue {
    RegistryType type = RegistryType::Binary;
    std::vector<std::uint8_t> bytes;

    static RegistryValue number(std::int32_t value);
    /// `terminated` false stores the text without its zero, as other programs sometimes do.
    static RegistryValue text(TextView value, RegistryType type = RegistryType::String, bool terminated = true);

    /// The number of a 4-byte value of any type; a big-endian one has its two halves swapped, as the readers of these
    /// settings always have. None for other sizes.
    std::optional<std::int32_t> asNumber() const;
    /// The text of a terminated (expandable) text value. None for other types or a missing terminator.
    std::optional<Text> asText() const;
    bool operator==(const RegistryValue&) const = default;
};

/// Hierarchical settings. Keys are backslash paths; key and value names are compared without regard to case;
/// the empty value name is a key's default value. Every operation is safe against other processes' operations.
/// Failures of the store behind it are raised as `StatusError`.
class Registry {
public:
    virtual ~Registry() = default;

    virtual bool keyExists(RegistryRoot root, TextView key, RegistryView view = RegistryView::Bits64) = 0;
    /// Makes the key and its parents; success if it is there already.
    virtual void createKey(RegistryRoot root, TextView key, RegistryView view = RegistryView::Bits64) = 0;
    /// Names of the direct sub-keys, in the order of their names.
    virtual std::vector<Text> subKeys(RegistryRoot root, TextView key, RegistryView view = RegistryView::Bits64) = 0;
    /// Names of the values, in the order of their names.
    virtual std::vector<Text> valueNames(RegistryRoot root, TextView key, RegistryView view = RegistryView::Bits64) = 0;
    virtual std::optional<RegistryValue> read(
        RegistryRoot root, TextView key, TextView name, RegistryView view = RegistryView::Bits64)
        = 0;
    /// Creates or replaces the value, and the key if it is missing. False if the key may not be written.
    virtual bool write(RegistryRoot root, TextView key, TextView name, const RegistryValue& value,
        RegistryView view = RegistryView::Bits64)
        = 0;
    /// Success if there is none.
    virtual void removeValue(RegistryRoot root, TextView key, TextView name, RegistryView view = RegistryView::Bits64)
        = 0;
    /// Removes the key with everything below it. Success if there is none.
    virtual void removeKey(RegistryRoot root, TextView key, RegistryView view = RegistryView::Bits64) = 0;
};

} // namespace zn
