#pragma once

#include "base/Text.h"

#include <QString>

/// Between the system's texts and the toolkit's.
namespace zn {

inline QString shown(TextView text) { return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())); }
inline QString shown(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}
/// The units of a text of the toolkit's; valid as long as that is.
inline TextView viewOf(const QString& text)
{
    return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())};
}
inline Text typed(const QString& text) { return Text(viewOf(text)); }

} // namespace zn
