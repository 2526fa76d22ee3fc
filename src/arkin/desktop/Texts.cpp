#include "arkin/desktop/Texts.h"

#include "arkin/store/Codes.h"

#include <QMessageBox>

namespace arkin {

void tell(QWidget* parent, const QString& sentence)
{
    QMessageBox box(QMessageBox::Warning, QStringLiteral("ARKIN"), sentence, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void tellCurrentFailure(QWidget* parent) noexcept
{
    try {
        tell(parent, shown(currentFailure().sentence));
    } catch (...) {
        qCritical("A window's failure couldn't be shown.");
    }
}

} // namespace arkin
