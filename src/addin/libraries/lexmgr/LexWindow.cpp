#include "addin/libraries/lexmgr/LexWindow.h"

#include "addin/libraries/lexmgr/ControlText.h"

#include <QHelpEvent>
#include <QWhatsThis>

#include <algorithm>

namespace lexmgr {

namespace {

QString toQt(std::u16string_view text) { return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())); }

/// A toolkit breaks the lines of a tool tip only if it is rich text.
QString wrapped(const QString& text)
{
    constexpr qsizetype lineLength = 80;
    return text.size() <= lineLength ? text : "<qt>" + text.toHtmlEscaped() + "</qt>";
}

/// One direction of an anchored control: keeps the distances to the edges that the bits name.
void stretch(int& first, int& last, int growth, bool toFirst, bool toLast)
{
    if (toLast)
        last += growth;
    if (toLast && !toFirst)
        first += growth;
}

} // namespace

LexWindow::LexWindow(Library& library, WindowClient* client)
    : m_library(library)
    , m_client(client)
{
}

LexWindow::~LexWindow() { end(); }

void LexWindow::end()
{
    if (WindowClient* client = std::exchange(m_client, nullptr))
        client->mvDeInitialize();
}

void LexWindow::registerControl(int control, QWidget* widget, std::u16string_view defaultText)
{
    if (!widget)
        return;
    m_controls[control] = {widget, std::u16string(defaultText), {}};
    widget->installEventFilter(this);
}

bool LexWindow::mbInitLexWnd(QWidget* window, std::u16string_view name, std::u16string_view title)
{
    if (!window || name.empty())
        return false;
    m_window = window;
    connect(window, &QObject::destroyed, this, &LexWindow::end);
    const std::u16string section(name);
    const auto lookUp = [&](int id, const std::u16string& text) {
        return toQt(m_library.TSS_internal(id, section.c_str(), nullptr, text.c_str()));
    };
    if (!title.empty())
        window->setWindowTitle(lookUp(0, std::u16string(title)));
    for (const auto& [number, control] : m_controls) {
        if (control.widget && !control.defaultText.empty())
            setControlText(*control.widget, lookUp(number, control.defaultText));
    }
    return true;
}

QWidget* LexWindow::find(int control) const
{
    const auto found = m_controls.find(control);
    return found == m_controls.end() ? nullptr : found->second.widget.data();
}

int LexWindow::numberOf(const QObject* widget) const
{
    const auto found = std::find_if(m_controls.begin(), m_controls.end(),
        [widget](const auto& control) { return control.second.widget == widget; });
    return found == m_controls.end() ? -1 : found->first;
}

/// A widget is met in the state that its window gave it, which becomes what it wants by itself.
LexWindow::State& LexWindow::stateOf(QWidget& widget)
{
    State& state = m_states[&widget];
    if (state.widget != &widget) {
        const bool hidden = widget.isHidden() && widget.testAttribute(Qt::WA_WState_ExplicitShowHide);
        state = {&widget, !hidden, !widget.testAttribute(Qt::WA_ForceDisabled), {}};
    }
    return state;
}

void LexWindow::applyShown(const State& state)
{
    if (state.widget)
        state.widget->setVisible(state.shown
            && std::all_of(
                state.groups.begin(), state.groups.end(), [this](int group) { return m_groups[group].shown; }));
}

void LexWindow::applyEnabled(const State& state)
{
    if (state.widget)
        state.widget->setEnabled(state.enabled
            && std::all_of(
                state.groups.begin(), state.groups.end(), [this](int group) { return m_groups[group].enabled; }));
}

void LexWindow::mvAddControl(int group, int control) { mvAddControl(group, find(control)); }

void LexWindow::mvAddControl(int group, QWidget* widget)
{
    if (!widget)
        return;
    State& state = stateOf(*widget);
    state.groups.insert(group);
    const Group& added = m_groups[group];
    if (!added.shown)
        applyShown(state);
    if (!added.enabled)
        applyEnabled(state);
}

void LexWindow::mvShowGroup(int group, int showCommand)
{
    m_groups[group].shown = showCommand != showHidden;
    for (const auto& [widget, state] : m_states) {
        if (state.groups.contains(group))
            applyShown(state);
    }
}

void LexWindow::mvEnableGroup(int group, bool enable)
{
    m_groups[group].enabled = enable;
    for (const auto& [widget, state] : m_states) {
        if (state.groups.contains(group))
            applyEnabled(state);
    }
}

void LexWindow::mvMoveGroup(int group, int dx, int dy)
{
    for (const auto& [widget, state] : m_states) {
        if (state.widget && state.groups.contains(group) && !isPlacedByLayout(*state.widget))
            state.widget->move(state.widget->pos() + QPoint(dx, dy));
    }
}

bool LexWindow::mbShowCtrl(int control, int showCommand)
{
    QWidget* widget = find(control);
    if (!widget)
        return false;
    State& state = stateOf(*widget);
    state.shown = showCommand != showHidden;
    applyShown(state);
    return true;
}

bool LexWindow::mbEnableCtrl(int control, bool enable)
{
    QWidget* widget = find(control);
    if (!widget)
        return false;
    State& state = stateOf(*widget);
    state.enabled = enable;
    applyEnabled(state);
    return true;
}

Rect LexWindow::moGetCtrlPos(int control) const
{
    const QWidget* widget = find(control);
    if (!widget || !m_window || !m_window->isAncestorOf(widget))
        return {};
    const QPoint topLeft = widget->mapTo(m_window.data(), QPoint(0, 0));
    return {topLeft.x(), topLeft.y(), topLeft.x() + widget->width(), topLeft.y() + widget->height()};
}

void LexWindow::mvFixCtrl(int control, int anchorBits)
{
    QWidget* widget = find(control);
    if (widget && widget->parentWidget() && !isPlacedByLayout(*widget))
        m_controls[control].anchor = {anchorBits, widget->geometry(), widget->parentWidget()->size()};
}

void LexWindow::mvUpdateFixedCtrls()
{
    for (const auto& [number, control] : m_controls) {
        const Anchor& anchor = control.anchor;
        if (!control.widget || anchor.bits == 0)
            continue;
        const QSize growth = control.widget->parentWidget()->size() - anchor.parentSize;
        int left = anchor.place.left();
        int right = anchor.place.right();
        int top = anchor.place.top();
        int bottom = anchor.place.bottom();
        stretch(left, right, growth.width(), anchor.bits & anchorLeft, anchor.bits & anchorRight);
        stretch(top, bottom, growth.height(), anchor.bits & anchorTop, anchor.bits & anchorBottom);
        control.widget->setGeometry(QRect(QPoint(left, top), QPoint(right, bottom)));
    }
}

bool LexWindow::mbAddToolTip(int control, std::u16string_view text)
{
    QWidget* widget = find(control);
    if (!widget)
        return false;
    widget->setToolTip(wrapped(toQt(text)));
    return true;
}

/// Asks the client before a tool tip, and shows its help text for a control.
bool LexWindow::eventFilter(QObject* watched, QEvent* event)
{
    const auto type = event->type();
    if (!m_client || (type != QEvent::ToolTip && type != QEvent::WhatsThis && type != QEvent::QueryWhatsThis))
        return false;
    const int control = numberOf(watched);
    try {
        if (type == QEvent::ToolTip)
            return !m_client->mbPermitToolTip(control);
        const QString help = toQt(m_client->mbGetHelpString(control));
        if (help.isEmpty())
            return false;
        if (type == QEvent::QueryWhatsThis)
            event->accept();
        else
            QWhatsThis::showText(static_cast<QHelpEvent*>(event)->globalPos(), help, static_cast<QWidget*>(watched));
        return true;
    } catch (...) {
        return false; // a window that fails to tell gets the ordinary tool tip
    }
}

} // namespace lexmgr
