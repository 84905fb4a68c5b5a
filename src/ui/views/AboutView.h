#pragma once

#include "ui/views/UpdateDialog.h"

#include <QPointer>
#include <QUrl>
#include <QWidget>
#include <functional>

class QLabel;
class QPushButton;

namespace tovrin {

class UpdaterManager;

// The About window: the icon, the name, the version and motto, the update check and the web site.
// Escape closes it.
class AboutView : public QWidget {
public:
    using OpenUrl = std::function<void(const QUrl&)>;

    // Links open through `openUrl`, or in the user's browser when none is given.
    explicit AboutView(UpdaterManager& updater, OpenUrl openUrl = {}, QWidget* parent = nullptr);

    // Shows the window at the centre of the screen under the pointer, in front.
    void present();

    QPushButton* updateButton() const { return m_updateButton; }
    QPushButton* websiteLink() const { return m_websiteLink; }
    UpdateDialog* updateDialog() const { return m_updateDialog; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void followUpdater();

    UpdaterManager& m_updater;
    OpenUrl m_openUrl;
    QWidget* m_icon = nullptr;
    QPushButton* m_updateButton = nullptr;
    QPushButton* m_websiteLink = nullptr;
    QPointer<UpdateDialog> m_updateDialog;
};

} // namespace tovrin
