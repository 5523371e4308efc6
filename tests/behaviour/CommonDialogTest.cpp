#include "platform/CommonDialog.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>

#include "ShownWindow.h"
#include "behaviour/support/ScriptedDialogs.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "support/TempFolder.h"

namespace larder {
namespace {

class ACommonDialog : public test::ShownWindow {
  protected:
    test::ScriptedDialogs boxes_;
    Paths paths_;
    CommonDialog dialog_{boxes_, paths_};
};

TEST_F(ACommonDialog, KeepsTheFileInTheProgramsOwnForm) {
    boxes_.ThenFile("/home/cook/fish.jpg");
    dialog_.ShowOpen();
    EXPECT_EQ(dialog_.FileName, "\\home\\cook\\fish.jpg");
    boxes_.ThenFile("/home/\xE9\xAD\x9A.jpg");
    dialog_.ShowOpen();
    EXPECT_EQ(paths_.Native(dialog_.FileName), "/home/\xE9\xAD\x9A.jpg");
    EXPECT_EQ(boxes_.FilesAsked[1].StartAt, "/home/cook/fish.jpg");
}

TEST_F(ACommonDialog, CancelledIsFailure32755OnlyWhereThatWasAskedFor) {
    dialog_.FileName = "\\x.jpg";
    EXPECT_EQ(Ignoring([&] { dialog_.ShowOpen(); }), 0);
    dialog_.CancelError = true;
    EXPECT_EQ(Ignoring([&] { dialog_.ShowOpen(); }), 32755);
    EXPECT_EQ(dialog_.FileName, "\\x.jpg");
}

class TheSystemsFileDialog : public test::ShownWindow {
  protected:
    std::optional<std::string> AskAnd(const std::function<void(QFileDialog&)>& act) {
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            act(*box);
            if (box->isVisible()) box->reject();
        });
        return dialogs_.OpenFile(
            {"Pictures (*.bmp;*.jpg;*.gif)|*.bmp;*.jpg;*.gif", folder_.Native()});
    }
    test::TempFolder folder_;
    SystemDialogs dialogs_;
};

TEST_F(TheSystemsFileDialog, LooksForTheFiltersPatternsInTheFolderItBeginsIn) {
    QStringList filters;
    QString place;
    const auto chosen = AskAnd([&](QFileDialog& box) {
        filters = box.nameFilters();
        place = box.directory().path();
    });
    EXPECT_EQ(filters, QStringList{"Pictures (*.bmp *.jpg *.gif)"});
    EXPECT_EQ(place.toStdString(), folder_.Native());
    EXPECT_EQ(chosen, std::nullopt) << "closed without a choice";
}

TEST_F(TheSystemsFileDialog, AnswersWithTheFileThatWasTyped) {
    folder_.Write("fish.jpg", "x");
    const auto chosen = AskAnd([&](QFileDialog& box) {
        auto* name = box.findChild<QLineEdit*>();
        ASSERT_NE(name, nullptr);
        name->setText("fish.jpg");
        QTest::keyClick(name, Qt::Key_Return);
    });
    EXPECT_EQ(chosen, folder_.Native("fish.jpg"));
}

}  // namespace
}  // namespace larder
