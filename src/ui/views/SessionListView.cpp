#include "ui/views/SessionListView.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/viewmodels/TrayViewModel.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/SessionSectionView.h"

#include <QVBoxLayout>

namespace tovrin {

SessionListView::SessionListView(TrayViewModel& model, QWidget* parent)
    : QWidget(parent), m_model(model),
      m_waiting(new SessionSectionView(ForgeStyle::qColor(ForgeTheme::waitingRed), model, this)),
      m_working(new SessionSectionView(ForgeStyle::qColor(ForgeTheme::workingAmber), model, this)),
      m_resting(new SessionSectionView(ForgeStyle::qColor(ForgeTheme::ashDim), model, this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 4);
    column->setSpacing(0);
    column->addWidget(m_waiting);
    column->addWidget(m_working);
    column->addWidget(m_resting);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);

    new ChangeRelay(
        model.objectWillChange, [this] { refresh(); }, this);
    refresh();
}

std::vector<SessionRowView*> SessionListView::rows() const {
    std::vector<SessionRowView*> all;
    for (const SessionSectionView* section : {m_waiting, m_working, m_resting}) {
        const auto rows = section->rows();
        all.insert(all.end(), rows.begin(), rows.end());
    }
    return all;
}

void SessionListView::refresh() {
    m_waiting->setSessions(m_model.waitingTitle(), m_model.waiting());
    m_working->setSessions(m_model.workingTitle(), m_model.working());
    m_resting->setSessions(m_model.restingTitle(), m_model.idle());
}

} // namespace tovrin
