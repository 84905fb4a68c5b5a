#pragma once

#include "ui/viewmodels/TrayIconLook.h"

#include <QIcon>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <functional>

namespace tovrin {

class TrayViewModel;

// The tray icon's image, drawn from the roll-up and handed on only when the look really changed.
class TrayIcon : public QObject {
public:
    using Apply = std::function<void(const QIcon& icon, const QString& toolTip)>;

    static constexpr int sides[] = {16, 22, 24, 32, 48};

    TrayIcon(TrayViewModel& model, Apply apply, QObject* parent = nullptr);

    const TrayIconLook& look() const { return m_look; }

    static QIcon icon(const TrayIconLook& look);
    // The glyph fills the square; a waiting count sits on it as a badge in the lower right.
    static QPixmap pixmap(const TrayIconLook& look, int side);

private:
    void follow(const TrayIconLook& look);

    TrayViewModel& m_model;
    Apply m_apply;
    TrayIconLook m_look;
    bool m_applied = false;
};

} // namespace tovrin
