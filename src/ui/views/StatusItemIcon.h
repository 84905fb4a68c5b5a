#pragma once

#include "ui/viewmodels/StatusItemLook.h"

#include <QIcon>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <functional>

namespace tovrin {

class MenuBarViewModel;

// The tray icon's image, drawn from the roll-up and handed on only when the look really changed.
class StatusItemIcon : public QObject {
public:
    using Apply = std::function<void(const QIcon& icon, const QString& toolTip)>;

    static constexpr int sides[] = {16, 22, 24, 32, 48};

    StatusItemIcon(MenuBarViewModel& model, Apply apply, QObject* parent = nullptr);

    const StatusItemLook& look() const { return m_look; }

    static QIcon icon(const StatusItemLook& look);
    // The glyph fills the square; a waiting count sits on it as a badge in the lower right.
    static QPixmap pixmap(const StatusItemLook& look, int side);

private:
    void follow(const StatusItemLook& look);

    MenuBarViewModel& m_model;
    Apply m_apply;
    StatusItemLook m_look;
    bool m_applied = false;
};

} // namespace tovrin
