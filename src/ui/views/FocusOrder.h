#pragma once

#include <QWidget>
#include <vector>

namespace tovrin::FocusOrder {

// Moves the keyboard focus one step along `order`, from the widget in it that has its window's
// focus or, when none has, from just outside either end; wraps around, and passes over what can't
// take the focus now (hidden, disabled, pointer-only). Returns the widget now focused, if any.
// Rows come and go after the buttons around them are made, so creation order can't be the order.
QWidget* step(const std::vector<QWidget*>& order, bool forward);

} // namespace tovrin::FocusOrder
