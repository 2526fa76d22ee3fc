#pragma once

#include <memory>
#include <QString>
#include <string>

struct UCollator;

namespace zn {

/// Makes texts comparable by the user's alphabet, without regard to case, and with numbers in them by their value:
/// "part 9" stands before "Part 10". Two keys compare, as strings, like their texts.
class SortKeys {
public:
    /// Raises `StatusError` when the alphabet's rules can't be had.
    SortKeys();

    std::string operator()(const QString& text) const;

private:
    std::unique_ptr<UCollator, void (*)(UCollator*)> m_rules;
};

} // namespace zn
