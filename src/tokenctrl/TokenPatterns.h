#pragma once

#include <QHash>
#include <QString>
#include <vector>

namespace tokenctrl {

/// One known pattern.
struct TokenPattern {
    QString pattern;
    bool isVariable = false;
    QString displayText;
    QString secondText;
};

/// An entry of the menu: a pattern, or a level with entries below it.
struct MenuEntry {
    QString label;
    QString pattern; ///< empty for a level
    std::vector<MenuEntry> children;
};

/// A pattern found in a text.
struct PatternMatch {
    qsizetype position = 0;
    qsizetype length = 0;
};

/// The patterns that a box knows. Adding one costs the same however many are known, and so does finding one in a text;
/// the tree of the menu is made when it is first asked for.
class TokenPatterns {
public:
    void add(const TokenPattern& pattern, const QString& menuPath);

    /// Null for an unknown pattern. Valid until the next `add`.
    const TokenPattern* find(const QString& pattern) const;

    /// All patterns in the text from left to right, the longest at each place, without overlaps.
    std::vector<PatternMatch> matches(const QString& text) const;

    /// The first level of the menu.
    const std::vector<MenuEntry>& menu() const;

private:
    /// Length of the longest pattern that stands at the position, 0 for none.
    qsizetype matchAt(const QString& text, qsizetype position) const;

    QHash<QString, TokenPattern> m_patterns;
    /// Lengths of the known patterns by their first character, longest first.
    QHash<QChar, std::vector<qsizetype>> m_lengths;
    std::vector<std::pair<QString, QString>> m_menuPaths; ///< menu path and pattern, as they were added
    mutable std::vector<MenuEntry> m_menu;
    mutable bool m_menuIsStale = false;
};

} // namespace tokenctrl
