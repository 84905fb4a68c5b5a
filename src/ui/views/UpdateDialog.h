#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class QTextBrowser;

namespace tovrin {

class UpdaterManager;

// The answer to a user-started update check: the release on offer with its notes and the choice
// to install it, put it off or skip it; or that Tovrin is up to date, or why the check or the
// install failed. It follows the updater as its status changes. Escape closes it.
class UpdateDialog : public QWidget {
public:
    explicit UpdateDialog(UpdaterManager& updater, QWidget* parent = nullptr);

    // Shows the window at the centre of the screen under the pointer, in front.
    void present();

    QPushButton* installButton() const { return m_install; }
    QPushButton* laterButton() const { return m_later; }
    QPushButton* skipButton() const { return m_skip; }
    QPushButton* doneButton() const { return m_done; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void followUpdater();

    UpdaterManager& m_updater;
    QLabel* m_headline = nullptr;
    QLabel* m_detail = nullptr;
    QTextBrowser* m_notes = nullptr;
    QPushButton* m_install = nullptr;
    QPushButton* m_later = nullptr;
    QPushButton* m_skip = nullptr;
    QPushButton* m_done = nullptr;
};

} // namespace tovrin
