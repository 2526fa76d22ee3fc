#pragma once

#include <optional>
#include <QHash>
#include <QString>
#include <QStringView>
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

/// The patterns that a box knows. A box may get thousands that its text never names, so adding one only keeps it: those
/// with one first character are indexed when a text has that character, and the tree of the menu is made when it is
/// first asked for.
class TokenPatterns {
public:
    /// `menuPath` is empty for a pattern that isn't in the menu.
    void add(
        QStringView pattern, bool isVariable, QStringView displayText, QStringView secondText, QStringView menuPath);

    /// None for an unknown pattern.
    std::optional<TokenPattern> find(const QString& pattern) const;

    /// All patterns in the text from left to right, the longest at each place, without overlaps.
    std::vector<PatternMatch> matches(const QString& text) const;

    /// The first level of the menu. Valid until the next `add`.
    const std::vector<MenuEntry>& menu() const;

private:
    /// A part of `m_texts`.
    struct Part {
        qsizetype begin = 0;
        qsizetype length = 0;
    };
    struct Added {
        Part pattern;
        Part displayText;
        Part secondText;
        Part menuPath;
        bool isVariable = false;
    };
    /// The patterns with one first character.
    struct Family {
        std::vector<std::size_t> added;    ///< places in `m_added`
        std::size_t indexed = 0;           ///< how many of them the index has
        QHash<QString, std::size_t> index; ///< place by pattern, the last one added
        std::vector<qsizetype> lengths;    ///< of the indexed patterns, longest first
    };

    Part keep(QStringView text);
    QStringView view(const Part& part) const { return QStringView(m_texts).mid(part.begin, part.length); }
    /// Null if no pattern begins with the character. Its index is up to date.
    const Family* familyOf(QChar first) const;
    void index(Family& family, std::size_t place) const;
    /// Length of the longest pattern that stands at the position, 0 for none.
    qsizetype matchAt(const QString& text, qsizetype position) const;

    QString m_texts; ///< all texts one behind the other, which spares an allocation for each
    std::vector<Added> m_added;
    mutable QHash<QChar, Family> m_families;
    mutable std::vector<MenuEntry> m_menu;
    mutable bool m_menuIsStale = false;
};

} // namespace tokenctrl
