#pragma once

#include "ui/viewmodels/FlameCurves.h"

#include <QWidget>
#include <optional>

namespace tovrin {

// A flame wash as the background of its whole frame, under any children it holds; without a flame
// it paints nothing. Burns like FireText, on the same schedule and under the same motion setting.
class FlameFill : public QWidget {
public:
    explicit FlameFill(QWidget* parent = nullptr);
    ~FlameFill() override;

    void setFlame(std::optional<FlamePalette> flame);
    const std::optional<FlamePalette>& flame() const { return m_flame; }
    FireTextMode mode() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void followSchedule();

    std::optional<FlamePalette> m_flame;
};

} // namespace tovrin
