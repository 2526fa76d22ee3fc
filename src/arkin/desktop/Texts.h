#pragma once

#include "base/Text.h"

#include <QString>

class QWidget;

namespace arkin {

inline QString shown(zn::TextView text) { return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())); }
inline zn::Text typed(const QString& text)
{
    return zn::Text(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size()));
}
inline QString shown(const std::string& utf8) { return QString::fromStdString(utf8); }

/// Shows what the exception now being handled means, in a message box over the window. To be called inside a `catch`
/// block only.
void tellCurrentFailure(QWidget* parent) noexcept;
/// Shows a sentence until the user closes it.
void tell(QWidget* parent, const QString& sentence);

/// Runs the work of a slot or an event handler. What it raises ends in a message box: no exception may pass through
/// the toolkit.
template <class Work> void inSlot(QWidget* parent, Work&& work) noexcept
{
    try {
        work();
    } catch (...) {
        tellCurrentFailure(parent);
    }
}

} // namespace arkin
