#pragma once

#include "alerts/telegram/TelegramSettingsViewModel.h"
#include "app/AlertServices.h"
#include "app/SessionTracking.h"
#include "app/desktop/FocusServices.h"
#include "core/Clock.h"
#include "core/MainLoop.h"
#include "core/Signal.h"
#include "platform/GlobalShortcutsFactory.h"
#include "platform/linux/XdgAutostartLoginItems.h"
#include "platform/x11/XcbChipPinner.h"
#include "services/LoginItemManager.h"
#include "services/UpdaterManager.h"
#include "services/feedback/FeedbackViewModel.h"
#include "services/feedback/NetlifyFeedbackSubmitter.h"
#include "services/hotkey/GlobalHotkeyManager.h"
#include "services/hotkey/KeyboardShortcuts.h"
#include "services/telemetry/TelemetryAnalyticsReporter.h"
#include "services/telemetry/TelemetryClientFactory.h"
#include "ui/viewmodels/TrayViewModel.h"
#include "ui/views/FloatingChipWindowController.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace tovrin {

// The desktop application's object graph, built once in a fixed order and started once. It holds no
// logic of its own beyond that order.
class AppCoordinator {
public:
    AppCoordinator(MainLoop& loop, const Clock& clock);
    // A normal end (Quit, logout, SIGTERM): the telemetry client keeps its queue for the next run.
    ~AppCoordinator();
    AppCoordinator(const AppCoordinator&) = delete;
    AppCoordinator& operator=(const AppCoordinator&) = delete;

    // Runs once, when the tray icon first shows: status folder, notification server's capabilities, the
    // session pipeline with its first pass (alerts for sessions already waiting), the chip, its shortcut,
    // then analytics.
    void start();

    static std::filesystem::path statusDirectory();

    PreferencesStore& preferences() { return m_settings.preferences; }
    SessionStore& store() { return m_tracking.store; }
    TrayViewModel& trayViewModel() { return m_trayViewModel; }
    LoginItemManager& loginItems() { return m_loginItems; }
    TelegramSettingsViewModel& telegramSettings() { return m_telegramSettings; }
    FeedbackViewModel& feedback() { return m_feedback; }
    FloatingChipWindowController& chipController() { return m_chipController; }
    KeyboardShortcuts& shortcuts() { return m_shortcuts; }
    UpdaterManager& updater() { return m_updater; }
    // The tray application to start once this one has ended, after an installed update.
    const std::optional<std::filesystem::path>& relaunchExecutable() const { return m_relaunchExecutable; }
    AlertServices& alerts() { return m_alerts; }
    FocusServices& focus() { return m_focus; }
    bool started() const { return m_started; }

private:
    UserSettings m_settings;
    FocusServices m_focus;
    AlertServices m_alerts;
    SessionTracking m_tracking;
    TrayViewModel m_trayViewModel;
    XdgAutostartLoginItems m_autostart;
    LoginItemManager m_loginItems;
    XcbChipPinner m_chipPinner;
    FloatingChipWindowController m_chipController;
    std::unique_ptr<GlobalShortcuts> m_globalShortcuts;
    KeyboardShortcuts m_shortcuts;
    GlobalHotkeyManager m_hotkey;
    UpdaterManager m_updater;
    std::optional<std::filesystem::path> m_relaunchExecutable;
    TelegramSettingsViewModel m_telegramSettings;
    TelemetryClientFactory m_telemetryClients; // outlives the client it builds
    TelemetryAnalyticsReporter m_analytics;
    NetlifyFeedbackSubmitter m_feedbackSubmitter;
    FeedbackViewModel m_feedback;
    Subscriptions m_cancellables;
    bool m_started = false;
};

} // namespace tovrin
