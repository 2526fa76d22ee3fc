#include "addin/pages/print/MillimeterEdit.h"

#include <charconv>
#include <cmath>
#include <QLocale>
#include <QRegularExpression>

namespace zn {

std::optional<float> parseMillimeters(const QString& text)
{
    static const QRegularExpression pattern(
        QRegularExpression::anchoredPattern(QStringLiteral("\\s*([+-]?(?:[0-9]+(?:[.,][0-9]*)?|[.,][0-9]+))\\s*")));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const float number = QLocale::c().toFloat(match.captured(1).replace(u',', u'.'));
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

MillimeterEdit::MillimeterEdit(QWidget* parent)
    : QLineEdit(parent)
{
    setAlignment(Qt::AlignRight);
    setNumber(0.0F);
}

void MillimeterEdit::setNumber(float number)
{
    char digits[64];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number, std::chars_format::fixed);
    setText(QString::fromLatin1(digits, end.ptr - digits));
    m_last = number;
}

void MillimeterEdit::dropText()
{
    if (!number())
        setNumber(m_last);
}

} // namespace zn
