#pragma once

#include <QStringList>
#include <QWidget>
#include <functional>
#include <vector>

class QPushButton;

namespace tovrin {

// Mutually exclusive choices drawn as one segmented control, each segment a checkable button named
// by its label. As in a radio group, only the chosen segment is a stop of the Tab chain and the
// arrow keys move the choice. A choice made here shows at once and goes to `onChoose`; `setCurrent`
// shows one made elsewhere.
class SegmentedPicker : public QWidget {
public:
    SegmentedPicker(const QStringList& labels, std::function<void(int)> onChoose, QWidget* parent = nullptr);

    void setCurrent(int index);
    QPushButton* segment(int index) const { return m_segments.at(static_cast<std::size_t>(index)); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void choose(int index);

    std::vector<QPushButton*> m_segments;
    std::function<void(int)> m_onChoose;
    int m_current = 0;
};

} // namespace tovrin
