#pragma once

#include <QUrl>
#include <QWidget>
#include <functional>

class QAbstractButton;
class QPushButton;

namespace tovrin {

// "How do I set this up?": a bronze disclosure, closed at first, over the numbered steps of making a
// bot and a link to the account that makes them.
class TelegramSetupHelp : public QWidget {
public:
    using OpenUrl = std::function<void(const QUrl&)>;

    explicit TelegramSetupHelp(OpenUrl openUrl, QWidget* parent = nullptr);

    QAbstractButton* disclosure() const { return m_disclosure; }
    QPushButton* link() const { return m_link; }

private:
    QAbstractButton* m_disclosure;
    QWidget* m_steps;
    QPushButton* m_link;
};

} // namespace tovrin
