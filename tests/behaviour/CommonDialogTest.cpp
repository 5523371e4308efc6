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
        return dialogs_.OpenFile({"Pictures (*.bmp;*.jpg;*.gif)|*.bmp;*.jpg;*.gif", startAt_});
    }
    static void TypeName(QFileDialog& box, const std::string& text) {
        auto* name = box.findChild<QLineEdit*>();
        ASSERT_NE(name, nullptr);
        name->setText(QString::fromStdString(text));
        QTest::keyClick(name, Qt::Key_Return);
    }
    std::string PlaceAsked() {
        std::string place;
        AskAnd([&](QFileDialog& box) { place = box.directory().path().toStdString(); });
        return place;
    }
    test::TempFolder folder_;
    std::string startAt_ = folder_.Native();
    SystemDialogs dialogs_;
};

// The home of a user of the test's own, as long as it lives.
class Home {
  public:
    explicit Home(const std::string& folder) {
        qputenv("HOME", folder.c_str());
        qputenv("XDG_CONFIG_HOME", (folder + "/config").c_str());
    }
    ~Home() {
        qputenv("HOME", home_);
        was_ ? qputenv("XDG_CONFIG_HOME", config_) : qunsetenv("XDG_CONFIG_HOME");
    }
    Home(const Home&) = delete;
    Home& operator=(const Home&) = delete;

  private:
    const QByteArray home_ = qgetenv("HOME");
    const bool was_ = qEnvironmentVariableIsSet("XDG_CONFIG_HOME");
    const QByteArray config_ = qgetenv("XDG_CONFIG_HOME");
};

TEST_F(TheSystemsFileDialog, BeginsWithThePicturesOrElseAtHome) {
    const Home home(folder_.Native());
    startAt_.clear();
    EXPECT_EQ(PlaceAsked(), folder_.Native());
    folder_.MakeFolder("Pictures");
    dialogs_ = SystemDialogs();
    EXPECT_EQ(PlaceAsked(), folder_.Native("Pictures"));
}

TEST_F(TheSystemsFileDialog, BeginsAgainInTheFolderWhereTheUserWas) {
    const Home home(folder_.Native());
    folder_.MakeFolder("Pictures");
    folder_.MakeFolder("boat/catch");
    folder_.Write("boat/fish.jpg", "x");
    startAt_.clear();
    AskAnd([&](QFileDialog& box) {
        box.setDirectory(QString::fromStdString(folder_.Native("boat/catch")));
        box.reject();
    });
    EXPECT_EQ(PlaceAsked(), folder_.Native("boat/catch")) << "cancelled";
    AskAnd([&](QFileDialog& box) { TypeName(box, folder_.Native("boat/fish.jpg")); });
    EXPECT_EQ(PlaceAsked(), folder_.Native("boat")) << "of the file that was typed";
    startAt_ = folder_.Native("Pictures/x.jpg");
    EXPECT_EQ(PlaceAsked(), folder_.Native("Pictures")) << "where the program says so";
    startAt_.clear();
    EXPECT_EQ(PlaceAsked(), folder_.Native("Pictures"));
}

TEST_F(TheSystemsFileDialog, BeginsElsewhereWhenTheFolderHasGone) {
    const Home home(folder_.Native());
    folder_.MakeFolder("stick/fish");
    startAt_ = folder_.Native("stick/fish/a.jpg");
    EXPECT_EQ(PlaceAsked(), folder_.Native("stick/fish"));
    folder_.Delete("stick/fish");
    EXPECT_EQ(PlaceAsked(), folder_.Native());
}

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
    const auto chosen = AskAnd([&](QFileDialog& box) { TypeName(box, "fish.jpg"); });
    EXPECT_EQ(chosen, folder_.Native("fish.jpg"));
}

}  // namespace
}  // namespace larder
