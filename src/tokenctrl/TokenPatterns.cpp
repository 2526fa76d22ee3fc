#include "tokenctrl/TokenPatterns.h"

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

void TokenPatterns::add(const TokenPattern& pattern, const QString& menuPath)
{
    // The place holder of an object in a text can't be part of what stands for an object.
    if (pattern.pattern.isEmpty() || pattern.pattern.contains(QChar::ObjectReplacementCharacter))
        return;
    m_patterns.insert(pattern.pattern, pattern);
    std::vector<qsizetype>& lengths = m_lengths[pattern.pattern.front()];
    const auto place = std::lower_bound(lengths.begin(), lengths.end(), pattern.pattern.size(), std::greater<>());
    if (place == lengths.end() || *place != pattern.pattern.size())
        lengths.insert(place, pattern.pattern.size());
    if (!menuPath.isEmpty()) {
        m_menuPaths.emplace_back(menuPath, pattern.pattern);
        m_menuIsStale = true;
    }
}

const TokenPattern* TokenPatterns::find(const QString& pattern) const
{
    const auto found = m_patterns.constFind(pattern);
    return found == m_patterns.constEnd() ? nullptr : &*found;
}

qsizetype TokenPatterns::matchAt(const QString& text, qsizetype position) const
{
    const auto lengths = m_lengths.constFind(text[position]);
    if (lengths == m_lengths.constEnd())
        return 0;
    for (const qsizetype length : *lengths) {
        if (length <= text.size() - position && m_patterns.contains(text.mid(position, length)))
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
        for (const auto& [path, pattern] : m_menuPaths)
            tree.add(path, pattern);
        m_menu = tree.take();
        m_menuIsStale = false;
    }
    return m_menu;
}

} // namespace tokenctrl
