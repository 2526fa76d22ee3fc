#include "addin/pages/lists/SortKeys.h"

#include "base/Status.h"

#include <string_view>
#include <unicode/ucol.h>
#include <unicode/uloc.h>

namespace zn {

namespace {

/// The user's locale; without one the order that is common to all languages.
const char* sortLocale()
{
    const std::string_view locale = uloc_getDefault();
    return locale.ends_with("POSIX") ? "root" : nullptr;
}

} // namespace

SortKeys::SortKeys()
    : m_rules(nullptr, ucol_close)
{
    UErrorCode error = U_ZERO_ERROR;
    m_rules.reset(ucol_open(sortLocale(), &error));
    ucol_setAttribute(m_rules.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &error);
    ucol_setAttribute(m_rules.get(), UCOL_STRENGTH, UCOL_SECONDARY, &error);
    if (U_FAILURE(error))
        throw StatusError(E_FAIL, "The rules for sorting texts are missing on this machine.");
}

std::string SortKeys::operator()(const QString& text) const
{
    std::string key(static_cast<std::size_t>(text.size()) * 3 + 16, '\0');
    const auto fill = [&] {
        const int needed = ucol_getSortKey(m_rules.get(), reinterpret_cast<const char16_t*>(text.utf16()),
            static_cast<std::int32_t>(text.size()), reinterpret_cast<std::uint8_t*>(key.data()),
            static_cast<std::int32_t>(key.size()));
        return static_cast<std::size_t>(needed);
    };
    std::size_t needed = fill();
    if (needed > key.size()) {
        key.resize(needed);
        needed = fill();
    }
    key.resize(needed);
    return key;
}

} // namespace zn
