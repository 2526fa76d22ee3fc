#pragma once

#include "base/Text.h"

#include <QString>

/// Between the system's texts and the toolkit's.
namespace zn {

inline QString shown(TextView text) { return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())); }
inline Text typed(const QString& text)
{
    return Text(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size()));
}
/// A sentence in UTF-8, as exceptions carry it.
inline QString shownUtf8(const char* sentence) { return QString::fromUtf8(sentence); }

} // namespace zn
