#include "addin/libraries/tokenctrl/TokenPatterns.h"

#include <algorithm>
#include <functional>
#include <QStringList>

namespace tokenctrl {

namespace {

/// Collects menu paths into a tree. A level is found by its path, so that thousands of entries stay cheap.
class MenuTree {
public:
    void add(const QString& path, const QString& pattern)
    {
        const qsizetype cut = path.lastIndexOf(QLatin1Char('\\'));
        Level& level = levelOf(cut < 0 ? QString() : path.left(cut));
        level.items.push_back({path.mid(cut + 1), pattern, {}});
    }

    std::vector<MenuEntry> take() { return entriesOf(QString()); }

private:
    struct Item {
        QString label;
        QString pattern;
        QString levelPath; ///< of an item that is a level
    };
    struct Level {
        std::vector<Item> items;
    };

    Level& levelOf(const QString& path)
    {
        if (const auto found = m_levels.find(path); found != m_levels.end())
            return *found;
        if (!path.isEmpty()) {
            const qsizetype cut = path.lastIndexOf(QLatin1Char('\\'));
            levelOf(cut < 0 ? QString() : path.left(cut)).items.push_back({path.mid(cut + 1), QString(), path});
        }
        return *m_levels.insert(path, Level());
    }

    std::vector<MenuEntry> entriesOf(const QString& path)
    {
        std::vector<MenuEntry> entries;
        for (const Item& item : m_levels.value(path).items) {
            MenuEntry& entry = entries.emplace_back(MenuEntry{item.label, item.pattern, {}});
            if (item.pattern.isEmpty())
                entry.children = entriesOf(item.levelPath);
        }
        return entries;
    }

    QHash<QString, Level> m_levels;
};

} // namespace

TokenPatterns::Part TokenPatterns::keep(QStringView text)
{
    const qsizetype begin = m_texts.size();
    m_texts.append(text);
    return {begin, text.size()};
}

void TokenPatterns::add(
    QStringView pattern, bool isVariable, QStringView displayText, QStringView secondText, QStringView menuPath)
{
    // The place holder of an object in a text can't be part of what stands for an object.
    if (pattern.isEmpty() || pattern.contains(QChar::ObjectReplacementCharacter))
        return;
    m_families[pattern.front()].added.push_back(m_added.size());
    m_added.push_back({keep(pattern), keep(displayText), keep(secondText), keep(menuPath), isVariable});
    m_menuIsStale = m_menuIsStale || !menuPath.isEmpty();
}

void TokenPatterns::index(Family& family, std::size_t place) const
{
    const qsizetype length = m_added[place].pattern.length;
    family.index.insert(view(m_added[place].pattern).toString(), place);
    const auto rank = std::lower_bound(family.lengths.begin(), family.lengths.end(), length, std::greater<>());
    if (rank == family.lengths.end() || *rank != length)
        family.lengths.insert(rank, length);
}

const TokenPatterns::Family* TokenPatterns::familyOf(QChar first) const
{
    const auto found = m_families.find(first);
    if (found == m_families.end())
        return nullptr;
    for (; found->indexed < found->added.size(); ++found->indexed)
        index(*found, found->added[found->indexed]);
    return &*found;
}

std::optional<TokenPattern> TokenPatterns::find(const QString& pattern) const
{
    const Family* family = pattern.isEmpty() ? nullptr : familyOf(pattern.front());
    const auto place = family ? family->index.constFind(pattern) : QHash<QString, std::size_t>::const_iterator();
    if (!family || place == family->index.constEnd())
        return std::nullopt;
    const Added& added = m_added[*place];
    return TokenPattern{
        pattern, added.isVariable, view(added.displayText).toString(), view(added.secondText).toString()};
}

qsizetype TokenPatterns::matchAt(const QString& text, qsizetype position) const
{
    const Family* family = familyOf(text[position]);
    if (!family)
        return 0;
    for (const qsizetype length : family->lengths) {
        if (length <= text.size() - position && family->index.contains(text.mid(position, length)))
            return length;
    }
    return 0;
}

std::vector<PatternMatch> TokenPatterns::matches(const QString& text) const
{
    std::vector<PatternMatch> found;
    for (qsizetype position = 0; position < text.size();) {
        const qsizetype length = matchAt(text, position);
        if (length > 0)
            found.push_back({position, length});
        position += std::max<qsizetype>(length, 1);
    }
    return found;
}

const std::vector<MenuEntry>& TokenPatterns::menu() const
{
    if (m_menuIsStale) {
        MenuTree tree;
        for (const Added& added : m_added) {
            if (added.menuPath.length > 0)
                tree.add(view(added.menuPath).toString(), view(added.pattern).toString());
        }
        m_menu = tree.take();
        m_menuIsStale = false;
    }
    return m_menu;
}

} // namespace tokenctrl
