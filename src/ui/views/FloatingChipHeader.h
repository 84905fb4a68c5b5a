#pragma once

#include "ui/theme/FlameFill.h"
#include "ui/viewmodels/ChipHeader.h"

#include <QImage>
#include <functional>

namespace tovrin {

// The chip's one line over its flame: the roll-up's eye, the counts, and a chevron while there is a
// list to unfold. It is as wide as that line needs; a host may make it wider.
class FloatingChipHeader : public FlameFill {
public:
    explicit FloatingChipHeader(QWidget* parent = nullptr);

    void setContent(ChipHeader::Content content);
    const ChipHeader::Content& content() const { return m_content; }

    // What pressing the header, as assistive tools do, asks of the chip; a pointer's tap reaches the
    // chip directly, which tells it from a drag.
    std::function<void()> onActivate;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // Text, symbols and their shadow, drawn once per content and size; the flame under it burns on.
    const QImage& foreground();

    ChipHeader::Content m_content;
    QImage m_foreground;
};

} // namespace tovrin
