#include "platform/Dialogs.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "ShownWindow.h"

namespace larder {
namespace {

class AMessageBox : public test::ShownWindow {
  protected:
    // Shows one and does this to the box that the user sees.
    Dialogs::Answer AskAnd(Dialogs::Buttons buttons, const std::function<void(QMessageBox&)>& act,
                           const std::string& text = "Text",
                           Dialogs::Icon icon = Dialogs::Icon::Critical) {
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            act(*box);
            if (box->isVisible()) box->close();
        });
        return dialogs_.MessageBox(text, buttons, icon, "Tidewell Larder");
    }
    static std::function<void(QMessageBox&)> Press(QMessageBox::StandardButton button) {
        return [button](QMessageBox& box) { box.button(button)->click(); };
    }
    SystemDialogs dialogs_;
};

TEST_F(AMessageBox, AnswersWithTheButtonThatWasPressed) {
    using B = Dialogs::Buttons;
    using A = Dialogs::Answer;
    EXPECT_EQ(AskAnd(B::Ok, Press(QMessageBox::Ok)), A::Ok);
    EXPECT_EQ(AskAnd(B::OkCancel, Press(QMessageBox::Ok)), A::Ok);
    EXPECT_EQ(AskAnd(B::OkCancel, Press(QMessageBox::Cancel)), A::Cancel);
    EXPECT_EQ(AskAnd(B::YesNo, Press(QMessageBox::Yes)), A::Yes);
    EXPECT_EQ(AskAnd(B::YesNo, Press(QMessageBox::No)), A::No);
    EXPECT_EQ(AskAnd(B::YesNoPreferNo, Press(QMessageBox::Yes)), A::Yes);
    EXPECT_EQ(AskAnd(B::YesNoPreferNo, Press(QMessageBox::No)), A::No);
}

TEST_F(AMessageBox, ClosedWithoutAChoiceItIsCancelOrNoOrOkWhereThereIsNothingElse) {
    const auto escape = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
    EXPECT_EQ(AskAnd(Dialogs::Buttons::OkCancel, escape), Dialogs::Answer::Cancel);
    EXPECT_EQ(AskAnd(Dialogs::Buttons::YesNo, escape), Dialogs::Answer::No);
    EXPECT_EQ(AskAnd(Dialogs::Buttons::YesNoPreferNo, escape), Dialogs::Answer::No);
    EXPECT_EQ(AskAnd(Dialogs::Buttons::Ok, escape), Dialogs::Answer::Ok);
}

TEST_F(AMessageBox, EnterIsTheFirstButtonOrNoWhereThatIsPreferred) {
    const auto enter = [](QMessageBox& box) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
        QTest::keyClick(box.focusWidget(), Qt::Key_Return);
    };
    EXPECT_EQ(AskAnd(Dialogs::Buttons::OkCancel, enter), Dialogs::Answer::Ok);
    EXPECT_EQ(AskAnd(Dialogs::Buttons::YesNo, enter), Dialogs::Answer::Yes);
    EXPECT_EQ(AskAnd(Dialogs::Buttons::YesNoPreferNo, enter), Dialogs::Answer::No);
}

TEST_F(AMessageBox, TheTextIsPlainAndEveryLineEndABreak) {
    QString text;
    Qt::TextFormat format = Qt::AutoText;
    AskAnd(
        Dialogs::Buttons::Ok,
        [&](QMessageBox& box) {
            text = box.text();
            format = box.textFormat();
        },
        "a\rb\r\nc\nd <b>e</b> caf\xE9");
    EXPECT_EQ(text, QString::fromUtf8("a\nb\nc\nd <b>e</b> caf\xC3\xA9"));
    EXPECT_EQ(format, Qt::PlainText);
}

TEST_F(AMessageBox, HasItsTitleAndIconAndIsModalOverTheActiveWindow) {
    Show();
    AskAnd(
        Dialogs::Buttons::YesNo,
        [&](QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), QStringLiteral("Tidewell Larder"));
            EXPECT_EQ(box.icon(), QMessageBox::Question);
            EXPECT_TRUE(box.isModal());
            EXPECT_EQ(box.parentWidget(), window.Native());
        },
        "?", Dialogs::Icon::Question);
}

TEST_F(AMessageBox, MayBeShownBeforeAnyWindow) {
    EXPECT_EQ(AskAnd(Dialogs::Buttons::Ok, Press(QMessageBox::Ok)), Dialogs::Answer::Ok);
}

}  // namespace
}  // namespace larder
