#pragma once

#include "ui/theme/BurningWidget.h"

namespace tovrin {

// A flame wash as the background of its whole frame, under any children it holds; without a flame
// it paints nothing. Burns like FireText, on the same schedule and under the same motion setting.
class FlameFill : public BurningWidget {
public:
    using BurningWidget::BurningWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tovrin
