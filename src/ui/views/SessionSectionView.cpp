#include "ui/views/SessionSectionView.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/StatusDot.h"
#include "ui/views/ElidedLabel.h"
#include "ui/views/SessionRowView.h"
#include "ui/views/ViewAccessibility.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace tovrin {

SessionSectionView::SessionSectionView(const QColor& tint, TrayViewModel& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_rowsLayout(new QVBoxLayout) {
    ViewAccessibility::install();
    QFont headingFont = ForgeStyle::systemFont(11, QFont::DemiBold);
    headingFont.setLetterSpacing(QFont::AbsoluteSpacing, 1.4);
    m_heading = new ElidedLabel(headingFont, ForgeStyle::qColor(ForgeTheme::bronzeDim));

    auto* headingRow = new QHBoxLayout;
    headingRow->setContentsMargins(16, 12, 16, 4);
    headingRow->setSpacing(8);
    headingRow->addWidget(new StatusDot(tint, true, this), 0, Qt::AlignVCenter);
    headingRow->addWidget(m_heading, 1);

    m_rowsLayout->setContentsMargins(0, 0, 0, 0);
    m_rowsLayout->setSpacing(0);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(headingRow);
    column->addLayout(m_rowsLayout);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setVisible(false);
}

void SessionSectionView::setSessions(const std::string& title, const std::vector<AgentSession>& sessions) {
    m_title = QString::fromStdString(title);
    m_heading->setText(m_title.toUpper());

    std::map<std::string, SessionRowView*> kept;
    for (const AgentSession& session : sessions) {
        const std::string id = session.id();
        SessionRowView* row = nullptr;
        if (auto it = m_rows.find(id); it != m_rows.end()) {
            row = it->second;
            m_rows.erase(it);
            row->setSession(session);
        } else {
            row = new SessionRowView(session, m_model, this);
        }
        kept.emplace(id, row);
        m_rowsLayout->removeWidget(row);
        m_rowsLayout->addWidget(row);
    }
    // What is left has left the section; deleted later, since a click on it may still be unwinding.
    for (auto& [id, row] : m_rows) {
        m_rowsLayout->removeWidget(row);
        row->hide();
        row->deleteLater();
    }
    m_rows = std::move(kept);
    setVisible(!m_rows.empty());
}

QString SessionSectionView::heading() const {
    return m_heading->text();
}

std::vector<SessionRowView*> SessionSectionView::rows() const {
    std::vector<SessionRowView*> ordered;
    for (int i = 0; i < m_rowsLayout->count(); ++i) {
        if (auto* row = dynamic_cast<SessionRowView*>(m_rowsLayout->itemAt(i)->widget()))
            ordered.push_back(row);
    }
    return ordered;
}

} // namespace tovrin
