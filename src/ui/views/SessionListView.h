#pragma once

#include <QWidget>
#include <vector>

namespace tovrin {

class TrayViewModel;
class SessionRowView;
class SessionSectionView;

// The sessions in three sections, waiting, working and resting, each under its heading; it follows
// the model by itself. Its width is its host's.
class SessionListView : public QWidget {
public:
    explicit SessionListView(TrayViewModel& model, QWidget* parent = nullptr);

    SessionSectionView* waitingSection() const { return m_waiting; }
    SessionSectionView* workingSection() const { return m_working; }
    SessionSectionView* restingSection() const { return m_resting; }
    // Every row, top to bottom.
    std::vector<SessionRowView*> rows() const;

private:
    void refresh();

    TrayViewModel& m_model;
    SessionSectionView* m_waiting;
    SessionSectionView* m_working;
    SessionSectionView* m_resting;
};

} // namespace tovrin
