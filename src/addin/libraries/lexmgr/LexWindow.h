#pragma once

#include "addin/libraries/lexmgr/LexMgr.h"

#include <QPointer>
#include <QWidget>

#include <map>
#include <set>

namespace lexmgr {

/// The library's window: translated controls with groups, anchors and tool tips. An object only to see the events of
/// its controls.
class LexWindow : public QObject, public Window {
public:
    LexWindow(Library& library, WindowClient* client);
    ~LexWindow() override;

    void registerControl(int control, QWidget* widget, std::u16string_view defaultText) override;
    bool mbInitLexWnd(QWidget* window, std::u16string_view name, std::u16string_view title) override;
    void mvAddControl(int group, int control) override;
    void mvAddControl(int group, QWidget* widget) override;
    void mvShowGroup(int group, int showCommand) override;
    void mvEnableGroup(int group, bool enable) override;
    void mvMoveGroup(int group, int dx, int dy) override;
    bool mbShowCtrl(int control, int showCommand) override;
    bool mbEnableCtrl(int control, bool enable) override;
    Rect moGetCtrlPos(int control) const override;
    void mvFixCtrl(int control, int anchorBits) override;
    void mvUpdateFixedCtrls() override;
    bool mbAddToolTip(int control, std::u16string_view text) override;

    /// The window whose texts these are; null before `mbInitLexWnd` and after its end.
    const QWidget* window() const { return m_window; }
    WindowClient* client() const { return m_client; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What is wanted of a widget: by itself and by its groups.
    struct State {
        QPointer<QWidget> widget;
        bool shown = true;
        bool enabled = true;
        std::set<int> groups;
    };
    struct Group {
        bool shown = true;
        bool enabled = true;
    };
    struct Anchor {
        int bits = 0;
        QRect place;
        QSize parentSize;
    };
    struct Control {
        QPointer<QWidget> widget;
        std::u16string defaultText;
        Anchor anchor;
    };

    QWidget* find(int control) const;
    int numberOf(const QObject* widget) const;
    State& stateOf(QWidget& widget);
    void applyShown(const State& state);
    void applyEnabled(const State& state);
    void end();

    Library& m_library;
    WindowClient* m_client;
    QPointer<QWidget> m_window;
    std::map<int, Control> m_controls;
    std::map<const QObject*, State> m_states;
    std::map<int, Group> m_groups;
};

} // namespace lexmgr
