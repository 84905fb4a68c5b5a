#pragma once

#include "sessions/AgentSession.h"

#include <QColor>
#include <QWidget>
#include <map>
#include <string>
#include <vector>

class QVBoxLayout;

namespace tovrin {

class ElidedLabel;
class TrayViewModel;
class SessionRowView;

// A heading with a glowing dot of the section's tint, then one row per session. With no sessions
// the section is hidden altogether, heading included.
class SessionSectionView : public QWidget {
public:
    SessionSectionView(const QColor& tint, TrayViewModel& model, QWidget* parent = nullptr);

    // Rows are kept by session id: a session that stays keeps its row (and its hover), others come
    // and go, and the rows follow the list's order.
    void setSessions(const std::string& title, const std::vector<AgentSession>& sessions);

    // The section's title as given; the heading shows it in capitals.
    const QString& title() const { return m_title; }
    QString heading() const;
    std::vector<SessionRowView*> rows() const;

private:
    TrayViewModel& m_model;
    QString m_title;
    ElidedLabel* m_heading;
    QVBoxLayout* m_rowsLayout;
    std::map<std::string, SessionRowView*> m_rows;
};

} // namespace tovrin
