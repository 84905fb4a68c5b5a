#include "ui/views/FloatingChipWindowController.h"

#include "core/PreferencesStore.h"
#include "ui/viewmodels/ChipCornerDefaults.h"
#include "ui/viewmodels/TrayViewModel.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/FloatingChipPanel.h"
#include "ui/views/FloatingChipPinning.h"
#include "ui/views/FloatingChipView.h"
#include "ui/views/Openers.h"

#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>

namespace tovrin {

namespace {

ChipRect toChip(const QRect& r) {
    return {double(r.x()), double(r.y()), double(r.width()), double(r.height())};
}

// Rounded so that the top-right corner lands exactly where asked.
QRect toQt(const ChipRect& r) {
    const int width = qRound(r.width);
    return {qRound(r.maxX()) - width, qRound(r.y), width, qRound(r.height)};
}

std::optional<ChipRect> mainScreenVisibleFrame() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return std::nullopt;
    return toChip(screen->availableGeometry());
}

void showStandardAbout() {
    auto* box = new QMessageBox(QMessageBox::NoIcon, QStringLiteral("Tovrin"),
                                QStringLiteral("Tovrin ") + QApplication::applicationVersion());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->show();
}

} // namespace

FloatingChipWindowController::FloatingChipWindowController(TrayViewModel& viewModel,
                                                           PreferencesStore& preferences,
                                                           DefaultsStore& defaults,
                                                           FloatingChipPinning* pinning)
    : m_viewModel(viewModel), m_preferences(preferences), m_defaults(defaults), m_pinning(pinning) {}

FloatingChipWindowController::~FloatingChipWindowController() = default;

void FloatingChipWindowController::buildPanel() {
    if (m_panel) return;
    FloatingChipActions actions;
    actions.onOpenSettings = [] { openers().settings.open(); };
    actions.onOpenFeedback = [] { openers().feedback.open(); };
    actions.onOpenAbout = [] {
        if (!openers().about.open()) showStandardAbout();
    };
    actions.onQuit = [] { QCoreApplication::quit(); };
    actions.onSizeChange = [this](ChipSize size) { resizeTo(size); };

    m_panel = std::make_unique<FloatingChipPanel>(new FloatingChipView(m_viewModel, std::move(actions)));
    m_panel->setGeometry(toQt(ChipLayout::initialFrame));
    m_panel->onMove = [this] { windowDidMove(); };
    m_panel->onExposed = [this] { pinWindow(); };
    positionAtSavedAnchor();
    m_panel->view()->reportSize();
}

void FloatingChipWindowController::observe() {
    m_modelRelay = std::make_unique<ChangeRelay>(
        m_viewModel.objectWillChange, [this] { evaluateVisibility(); }, nullptr);
    m_preferencesRelay = std::make_unique<ChangeRelay>(
        m_preferences.objectWillChange,
        [this] {
            applyOpacity();
            evaluateVisibility();
        },
        nullptr);
}

void FloatingChipWindowController::applyOpacity() {
    if (m_panel) m_panel->setWindowOpacity(ChipLayout::alpha(m_preferences.chipOpacity()));
}

void FloatingChipWindowController::evaluateVisibility() {
    if (!m_panel) return;
    switch (ChipLayout::visibilityChange(shouldShow(), m_panel->isVisible())) {
    case ChipLayout::VisibilityChange::show:
        pinWindow();
        m_panel->show();
        m_panel->raise();
        break;
    case ChipLayout::VisibilityChange::hide:
        m_panel->hide();
        break;
    case ChipLayout::VisibilityChange::none:
        break;
    }
}

bool FloatingChipWindowController::shouldShow() const {
    return ChipLayout::shouldShow({m_preferences.showFloatingChip(), m_preferences.chipOnlyWhenWaiting(),
                                   m_viewModel.aggregate(), m_viewModel.hasSessions(), m_standsInForTray});
}

void FloatingChipWindowController::standInForTray(QMenu& menu) {
    m_standsInForTray = true;
    if (!m_panel) return;
    m_panel->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(
        m_panel.get(), &QWidget::customContextMenuRequested, &menu,
        [panel = m_panel.get(), &menu](const QPoint& at) { menu.popup(panel->mapToGlobal(at)); });
    evaluateVisibility();
}

void FloatingChipWindowController::positionAtSavedAnchor() {
    if (!m_panel) return;
    const ChipRect placed = ChipLayout::placedFrame(
        toChip(m_panel->geometry()), ChipCornerDefaults::read(m_defaults), mainScreenVisibleFrame());
    // The window itself, not a frame that a window manager may add around it: the corner is the chip's.
    m_panel->setGeometry(toQt(placed));
}

void FloatingChipWindowController::windowDidMove() {
    if (!m_panel) return;
    ChipCornerDefaults::write(m_defaults, ChipLayout::cornerToSave(toChip(m_panel->geometry())));
}

void FloatingChipWindowController::resizeTo(ChipSize measured) {
    if (!m_panel) return;
    if (const auto frame = m_resizer.resize(toChip(m_panel->geometry()), measured))
        m_panel->setGeometry(toQt(*frame));
}

void FloatingChipWindowController::pinWindow() {
    // Only on X11 is the native window an X window that the pinning can address.
    if (!m_pinning || !m_panel || QGuiApplication::platformName() != QLatin1String("xcb")) return;
    m_pinning->pin(m_panel->winId());
}

} // namespace tovrin
