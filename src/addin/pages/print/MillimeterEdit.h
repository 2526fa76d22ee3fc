#pragma once

#include <optional>
#include <QLineEdit>

namespace zn {

/// A length in millimetres as it is written in any country: digits with a decimal comma or a decimal point, nothing
/// between thousands and no exponent. None for any other text.
std::optional<float> parseMillimeters(const QString& text);

/// An edit for a length in millimetres. It takes any text; `number` says whether it is one.
class MillimeterEdit final : public QLineEdit {
public:
    explicit MillimeterEdit(QWidget* parent);

    std::optional<float> number() const { return parseMillimeters(text()); }
    /// Shows a number in a way that reads back as the same number.
    void setNumber(float number);
    /// Replaces a text that is no number by the last number that the edit was given or has shown.
    void dropText();

private:
    float m_last = 0.0F;
};

} // namespace zn
