#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace tovrin {

class FeedbackViewModel;
class SegmentedPicker;
class SpinnerButton;

// The feedback window: the form (kind, message, optional address, Cancel and Send) or, once the
// message went through, the thanks. Everything it shows follows the model, which outlives it.
// Ctrl+Return sends; Escape closes.
class FeedbackView : public QWidget {
public:
    explicit FeedbackView(FeedbackViewModel& model, QWidget* parent = nullptr);

    // Shows the window at the centre of the screen under the pointer, in front.
    void present();

    SegmentedPicker* kindPicker() const { return m_picker; }
    QPlainTextEdit* messageEditor() const { return m_message; }
    QLineEdit* emailField() const { return m_email; }
    QLabel* failureText() const { return m_failure; }
    QPushButton* cancelButton() const { return m_cancel; }
    SpinnerButton* sendButton() const { return m_send; }
    QWidget* form() const { return m_form; }
    QWidget* sentFace() const { return m_sent; }
    QPushButton* doneButton() const { return m_done; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* buildForm();
    QWidget* buildSentFace();
    void refresh();
    // Where the keyboard starts on the face that shows: the message, or Done.
    void focusFace();

    FeedbackViewModel& m_model;
    QWidget* m_form = nullptr;
    SegmentedPicker* m_picker = nullptr;
    QPlainTextEdit* m_message = nullptr;
    QLineEdit* m_email = nullptr;
    QLabel* m_failure = nullptr;
    QPushButton* m_cancel = nullptr;
    SpinnerButton* m_send = nullptr;
    QWidget* m_sent = nullptr;
    QWidget* m_seal = nullptr;
    QPushButton* m_done = nullptr;
};

} // namespace tovrin
