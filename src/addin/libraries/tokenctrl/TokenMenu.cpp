#include "addin/libraries/tokenctrl/TokenMenu.h"

#include "addin/libraries/tokenctrl/TokenPatterns.h"

#include <algorithm>
#include <utility>

namespace tokenctrl {

namespace {

/// What a person still reads at a glance; the menus of neighbours hold at most as many.
constexpr std::ptrdiff_t mostEntries = 32;

/// An entry's text as a menu takes it, where "&" marks a key.
QString menuText(QString label) { return label.replace(QLatin1Char('&'), QLatin1String("&&")); }

} // namespace

TokenMenu::TokenMenu(const std::vector<MenuEntry>& entries, Chosen chosen, QWidget* parent)
    : TokenMenu(entries.data(), entries.data() + entries.size(), QString(), std::move(chosen), parent)
{
}

TokenMenu::TokenMenu(const MenuEntry* begin, const MenuEntry* end, const QString& title, Chosen chosen, QWidget* parent)
    : QMenu(menuText(title), parent)
    , m_begin(begin)
    , m_end(end)
    , m_chosen(std::move(chosen))
{
    connect(this, &QMenu::aboutToShow, this, &TokenMenu::fill);
}

void TokenMenu::fill()
{
    if (!actions().isEmpty())
        return;
    std::ptrdiff_t step = 1;
    while (m_end - m_begin > step * mostEntries)
        step *= mostEntries;
    for (const MenuEntry* first = m_begin; first != m_end;) {
        const MenuEntry* last = first + std::min(step, m_end - first);
        if (step == 1) {
            addEntry(*first);
        } else {
            const QString title = first->label + QLatin1String(" - ") + (last - 1)->label;
            addMenu(new TokenMenu(first, last, title, m_chosen, this));
        }
        first = last;
    }
}

void TokenMenu::addEntry(const MenuEntry& entry)
{
    if (entry.pattern.isEmpty()) {
        const MenuEntry* children = entry.children.data();
        addMenu(new TokenMenu(children, children + entry.children.size(), entry.label, m_chosen, this));
        return;
    }
    const QString pattern = entry.pattern;
    connect(addAction(menuText(entry.label)), &QAction::triggered, this, [this, pattern] { m_chosen(pattern); });
}

} // namespace tokenctrl
