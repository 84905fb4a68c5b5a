#pragma once

#include <QWidget>

namespace tovrin {

// The 1-high rule between sections: bronze in the middle, fading out to both ends.
class BronzeHairline : public QWidget {
public:
    explicit BronzeHairline(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tovrin
