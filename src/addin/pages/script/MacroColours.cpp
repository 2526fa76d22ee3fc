#include "addin/pages/script/MacroColours.h"

#include <QFont>
#include <QPalette>

namespace zn {

namespace {

struct PartColour {
    SourcePart part;
    QRgb light;
    QRgb dark;
    bool bold;
};

// Each colour has a contrast of at least 4.5 to 1 with a white, or a nearly black, background.
constexpr PartColour partColours[] = {
    {SourcePart::Keyword, 0x0033B3, 0x7AA2F7, true},
    {SourcePart::TypeName, 0x0B6E6E, 0x7FD1C7, false},
    {SourcePart::Directive, 0x6F42C1, 0xBB9AF7, true},
    {SourcePart::Comment, 0x5C6B5C, 0x93A393, false},
    {SourcePart::String, 0x8A3B12, 0xE0A97C, false},
    {SourcePart::Number, 0x1750EB, 0x8FC1FF, false},
    {SourcePart::HostPlaceholder, 0x7A4B00, 0xE5C07B, false},
    {SourcePart::TaskPlaceholder, 0x9C1D6B, 0xF08CC6, false},
    {SourcePart::FilePlaceholder, 0x00627A, 0x5CCFE6, false},
    {SourcePart::CardPlaceholder, 0x2F6B00, 0xA8D46F, false},
};
static_assert(std::size(partColours) == sourcePartCount);

constexpr int darkBelow = 128;
constexpr int tint = 32; ///< of 255: the ground behind a placeholder in its own colour

bool isPlaceholder(SourcePart part) { return part >= SourcePart::HostPlaceholder; }

QColor mixed(const QColor& one, const QColor& other, double share)
{
    const auto mix = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()), mix(one.blue(), other.blue())};
}

} // namespace

MacroColours macroColours(const QPalette& palette)
{
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const bool dark = base.lightness() < darkBelow;
    MacroColours colours;
    for (const PartColour& one : partColours) {
        QTextCharFormat& format = colours.parts[static_cast<std::size_t>(one.part)];
        const QColor colour(dark ? one.dark : one.light);
        format.setForeground(colour);
        if (one.bold)
            format.setFontWeight(QFont::DemiBold);
        if (isPlaceholder(one.part)) {
            QColor ground = colour;
            ground.setAlpha(tint);
            format.setBackground(ground);
        }
    }
    colours.error = dark ? QColor(0xFF6B6B) : QColor(0xC81E1E);
    colours.currentLine = mixed(base, text, 0.05);
    colours.blockWord = mixed(base, palette.color(QPalette::Highlight), 0.35);
    colours.gutter = mixed(base, text, 0.04);
    colours.lineNumber = mixed(base, text, 0.55);
    colours.currentLineNumber = text;
    return colours;
}

} // namespace zn
