#pragma once

#include "ui/viewmodels/FlameCurves.h"

#include <QWidget>
#include <optional>

namespace tovrin {

// A widget drawn with a flame: it holds the flame, and while shown and burning (a flame, and the
// desktop does not reduce motion) it is redrawn on the shared flicker schedule.
class BurningWidget : public QWidget {
public:
    explicit BurningWidget(QWidget* parent = nullptr);
    ~BurningWidget() override;

    void setFlame(std::optional<FlamePalette> flame);
    const std::optional<FlamePalette>& flame() const { return m_flame; }
    FireTextMode mode() const;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void followSchedule();

    std::optional<FlamePalette> m_flame;
};

} // namespace tovrin
