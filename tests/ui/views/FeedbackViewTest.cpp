#include "ui/views/FeedbackView.h"

#include "platform/qt/QtHttpClient.h"
#include "services/feedback/FeedbackViewModel.h"
#include "services/feedback/NetlifyFeedbackSubmitter.h"
#include "support/LocalHttpServer.h"
#include "support/QtEventLoopTest.h"
#include "support/RecordingAnalytics.h"
#include "support/RenderedImages.h"
#include "support/SettleEvents.h"
#include "ui/views/SegmentedPicker.h"
#include "ui/views/SpinnerButton.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <algorithm>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

using test::httpReply;

// The window over its real model and submitter, posting to a local stand-in for the web site.
class FeedbackViewTest : public test::QtEventLoopTest {
protected:
    void SetUp() override {
        view.present();
        test::settleEvents();
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QApplication::sendEvent(view.focusWidget(), &event);
        test::settleEvents();
    }
    void type(const QString& text) {
        for (const QChar ch : text)
            press(0, Qt::NoModifier, QString(ch));
    }

    test::LocalHttpServer server;
    QtHttpClient http;
    test::RecordingAnalytics analytics;
    NetlifyFeedbackSubmitter submitter{http, server.base() + "/", "feedback", "1.0 (1)"};
    FeedbackViewModel model{submitter, analytics};
    FeedbackView view{model};
};

TEST_F(FeedbackViewTest, TheKeyboardAloneFillsAndSendsTheFormAndARefusalIsShown) {
    EXPECT_EQ(view.windowTitle(), QStringLiteral("Tovrin Feedback"));
    const std::vector<std::pair<QWidget*, QString>> named = {
        {view.kindPicker()->segment(0), "Feedback"},
        {view.kindPicker()->segment(1), "Feature request"},
        {view.messageEditor(), "Message"},
        {view.emailField(), "Email"},
        {view.cancelButton(), "Cancel"},
        {view.sendButton(), "Send"},
    };
    for (const auto& [widget, name] : named)
        EXPECT_EQ(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name), name);

    // Typing starts in the message; a blank one can't be sent, by button or by keys.
    EXPECT_EQ(view.focusWidget(), view.messageEditor());
    type(QStringLiteral(" "));
    press(Qt::Key_Return);
    type(QStringLiteral(" "));
    EXPECT_FALSE(view.sendButton()->isEnabled());
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(server.received().empty());

    // Tab walks the form in order; the kinds are one stop before the message, chosen with the arrows.
    type(QStringLiteral("50% mode"));
    press(Qt::Key_Tab);
    type(QStringLiteral("ana@example.org"));
    for (QWidget* next : std::initializer_list<QWidget*>{view.cancelButton(), view.sendButton()}) {
        press(Qt::Key_Tab);
        EXPECT_EQ(view.focusWidget(), next);
    }
    view.messageEditor()->setFocus();
    press(Qt::Key_Backtab);
    ASSERT_EQ(view.focusWidget(), view.kindPicker()->segment(0));
    press(Qt::Key_Right);
    EXPECT_EQ(model.kind(), FeedbackKind::featureRequest);
    press(Qt::Key_Tab);
    ASSERT_EQ(view.focusWidget(), view.messageEditor());

    server.route("/", httpReply(500, "text/html", "<html>down</html>"));
    press(Qt::Key_Return, Qt::ControlModifier);
    ASSERT_TRUE(pumpUntil([&] { return view.failureText()->isVisible(); }));
    test::saveArtifact(view.grab().toImage(), QStringLiteral("feedback-refused"));
    EXPECT_EQ(view.failureText()->text(),
              QStringLiteral("The server turned it away (status 500). Please try again."));
    ASSERT_EQ(server.received().size(), 1u);
    EXPECT_EQ(server.received()[0].body, "form-name=feedback&type=feature&message=+%0A+50%25+mode"
                                         "&email=ana%40example.org&source=linux-app&appVersion=1.0+%281%29");
    EXPECT_EQ(view.messageEditor()->toPlainText(), QStringLiteral(" \n 50% mode"));
    EXPECT_TRUE(view.sendButton()->isEnabled());

    press(Qt::Key_Escape);
    EXPECT_FALSE(view.isVisible());
    EXPECT_EQ(model.message(), " \n 50% mode") << "Cancel and Escape leave the text to the next opening";
}

TEST_F(FeedbackViewTest, ASentMessageShowsTheThanksAndDoneCloses) {
    server.route("/", httpReply(200, "text/html", "<html>thanks</html>"));
    type(QStringLiteral("Lovely"));
    view.sendButton()->click();
    ASSERT_TRUE(pumpUntil([&] { return view.sentFace()->isVisible(); }));
    test::saveArtifact(view.grab().toImage(), QStringLiteral("feedback-sent"));
    EXPECT_FALSE(view.form()->isVisible());
    const auto texts = view.sentFace()->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [](QLabel* l) { return l->text() == "Thank you"; }));
    EXPECT_EQ(analytics.tracked, std::vector<std::string>{"Feedback.submitted"});
    EXPECT_EQ(view.focusWidget(), view.doneButton());

    view.doneButton()->click();
    EXPECT_FALSE(view.isVisible());
}

} // namespace
} // namespace tovrin
