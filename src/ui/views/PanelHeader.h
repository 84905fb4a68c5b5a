#pragma once

#include "sessions/AggregateStatus.h"

#include <QWidget>

namespace tovrin {

class FireText;

// The application's mark with an ember glow, and its name burning in the colour of the roll-up.
class PanelHeader : public QWidget {
public:
    explicit PanelHeader(QWidget* parent = nullptr);

    void setAggregate(const AggregateStatus& aggregate);
    FireText* brandLine() const { return m_brandLine; }

private:
    FireText* m_brandLine = nullptr;
};

} // namespace tovrin
