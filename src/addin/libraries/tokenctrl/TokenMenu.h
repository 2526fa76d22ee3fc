#pragma once

#include <functional>
#include <QMenu>

namespace tokenctrl {

struct MenuEntry;

/// A menu over a level of entries. It fills itself when it is about to be shown, and a level with many entries is cut
/// into submenus of neighbours, so that thousands of names open at once and fit a screen.
class TokenMenu : public QMenu {
    Q_OBJECT
public:
    using Chosen = std::function<void(const QString& pattern)>;

    /// `entries` must outlive the menu.
    TokenMenu(const std::vector<MenuEntry>& entries, Chosen chosen, QWidget* parent);

private:
    TokenMenu(const MenuEntry* begin, const MenuEntry* end, const QString& title, Chosen chosen, QWidget* parent);
    void fill();
    void addEntry(const MenuEntry& entry);

    const MenuEntry* m_begin;
    const MenuEntry* m_end;
    Chosen m_chosen;
};

} // namespace tokenctrl
