#include "arkin/desktop/Texts.h"

#include "arkin/store/Codes.h"

namespace zn::arkin {

void tell(QWidget* parent, const QString& sentence) { zn::showSentence(parent, QStringLiteral("ARKIN"), sentence); }

void tellCurrentFailure(QWidget* parent) noexcept
{
    try {
        tell(parent, shown(currentFailure().sentence));
    } catch (...) {
        qCritical("A window's failure couldn't be shown.");
    }
}

} // namespace zn::arkin
