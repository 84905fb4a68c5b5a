#include "ui/views/FocusOrder.h"

#include <algorithm>

namespace tovrin::FocusOrder {

QWidget* step(const std::vector<QWidget*>& order, bool forward) {
    std::vector<QWidget*> open;
    for (QWidget* widget : order) {
        if (widget && widget->isVisibleTo(widget->window()) && widget->isEnabled() &&
            (widget->focusPolicy() & Qt::TabFocus))
            open.push_back(widget);
    }
    if (open.empty()) return nullptr;

    const auto count = static_cast<std::ptrdiff_t>(open.size());
    const auto at = std::find(open.begin(), open.end(), open.front()->window()->focusWidget());
    std::ptrdiff_t index = forward ? 0 : count - 1;
    if (at != open.end()) index = ((at - open.begin()) + (forward ? 1 : count - 1)) % count;
    QWidget* next = open[static_cast<std::size_t>(index)];
    next->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return next;
}

} // namespace tovrin::FocusOrder
