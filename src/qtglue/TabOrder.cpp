#include "qtglue/TabOrder.h"

#include <vector>

namespace zn {

void tabFirstTo(QWidget& window, const std::function<bool(const QWidget& control)>& comeFirst)
{
    QWidget* last = nullptr;
    std::vector<QWidget*> others;
    for (QWidget* next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain()) {
        if (next->focusPolicy() == Qt::NoFocus || next->focusProxy())
            continue;
        if (comeFirst(*next))
            last = next;
        else
            others.push_back(next);
    }
    // From the end, each directly behind the first ones: a button isn't moved behind another one of its box.
    for (auto each = others.rbegin(); last && each != others.rend(); ++each)
        QWidget::setTabOrder(last, *each);
}

} // namespace zn
