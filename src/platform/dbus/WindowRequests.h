#pragma once

#include <QObject>
#include <chrono>
#include <functional>
#include <string>

namespace tovrin {

// One tray application per user: other processes (`tovrin settings`, a desktop-entry action, a
// second start) ask the running copy over the session bus to bring one of its windows forward.
namespace WindowRequests {

inline constexpr const char* serviceName = "com.tovrin.Tovrin";
inline constexpr const char* objectPath = "/com/tovrin/Tovrin";
inline constexpr const char* interfaceName = "com.tovrin.Tovrin.Windows";

enum class Outcome { shown, noApplication, refused };

// Asks the running copy to show `window` ("settings", "sessions", "about"), waiting up to `wait`
// for it to appear on the bus: it may be starting right now.
Outcome request(const std::string& window, std::chrono::milliseconds wait);

} // namespace WindowRequests

// The running copy's side: owns the bus name and answers Show(window) through `show`, which tells
// whether it knows the window.
class WindowRequestService : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tovrin.Tovrin.Windows")

public:
    explicit WindowRequestService(std::function<bool(const std::string&)> show);
    ~WindowRequestService() override;

    // Takes the name on the session bus; false when there is no bus or the name is taken.
    bool publish();

public Q_SLOTS:
    Q_SCRIPTABLE bool Show(const QString& window);

private:
    std::function<bool(const std::string&)> m_show;
    bool m_published = false;
};

} // namespace tovrin
