// While a recipe is being stored events run, and none of them may take it or its windows away.

#include <QTimer>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "behaviour/support/EditorBook.h"

namespace larder {
namespace {

using test::EditorBook;

// Does something while a save is under way: in the box that tells how it fails.
class ASaveUnderWay : public EditorBook {
  protected:
    void During(std::function<void()> act) {
        Boxes = {};
        Boxes.Then(Dialogs::Answer::Ok, [act = std::move(act)] { act(); });
        Main().files.Watch([](const NumberedFiles::Access& access) {
            if (access.Kind == "write") throw Failure(failure::DiskFull, std::string(access.Path));
        });
        ClickOn(Editor().ibAdd);
        Main().files.Watch(nullptr);
        ASSERT_EQ(Boxes.Shown.size(), 1U) << "the failure, and no question";
        EXPECT_NE(Boxes.Shown[0].Text.find("Disk full"), std::string::npos);
    }
    void ExpectStill(const std::string& title) {
        EXPECT_TRUE(EditorShown());
        EXPECT_TRUE(Main().ui.window.Visible());
        EXPECT_EQ(Editor().lngRecipeNum, 4);
        EXPECT_TRUE(Editor().rtbRecipe.Text().starts_with(title)) << Editor().rtbRecipe.Text();
    }
};

TEST_F(ASaveUnderWay, IsNotDisturbedByWhatWouldCloseAWindowOrOpenAnotherRecipe) {
    const std::vector<std::pair<const char*, std::function<void()>>> acts = {
        {"Cancel", [this] { ClickOn(Editor().ibCancel); }},
        {"the editor's close", [this] { Editor().window.Close(); }},
        {"the main window's close", [this] { Main().ui.window.Close(); }},
        {"another recipe", [this] { Main().editor.LoadRecipeToUpdate(5); }},
        {"the same save", [this] { Main().editor.ClickAdd(); }},
    };
    OpenOn(4);
    Type("Very ");
    for (const auto& [name, act] : acts) {
        SCOPED_TRACE(name);
        During(act);
        ExpectStill("Very Own Hake");
    }
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(Main().store.GetRecipeTitle(4), "Very Own Hake");
}

// Closes every dialog and menu that comes up, and counts them.
class Closer {
  public:
    Closer() {
        QObject::connect(&looking_, &QTimer::timeout, &looking_, [this] {
            QWidget* shown = QApplication::activePopupWidget();
            if (shown == nullptr) shown = QApplication::activeModalWidget();
            if (shown == nullptr) return;
            ++Closed;
            shown->close();
        });
        looking_.start(1);
    }
    int Closed = 0;

  private:
    QTimer looking_;
};

TEST_F(ASaveUnderWay, IsNotMadeToWaitUnderADialogOrAMenu) {
    const std::vector<std::pair<const char*, std::function<void()>>> acts = {
        {"the main window's Add", [this] { ClickOn(Main().ui.ibAdd); }},
        {"its key", [this] { QTest::keyClick(Main().ui.ibAdd.Native(), Qt::Key_Return); }},
        {"the menu of a recipe", [this] { PressLine(2, 2, Qt::RightButton); }},
        {"another picture", [this] { ClickOn(Editor().ibAssignPicture); }},
        {"no picture", [this] { ClickOn(Editor().ibRemovePicture); }},
    };
    MakePicture(Photo("4.jpg"));
    OpenOn(4);
    Type("Very ");
    Closer closer;
    for (const auto& [name, act] : acts) {
        SCOPED_TRACE(name);
        During(act);
        EXPECT_EQ(closer.Closed, 0);
        ExpectStill("Very Own Hake");
    }
    EXPECT_TRUE(Boxes.FilesAsked.empty());
}

TEST_F(ASaveUnderWay, IsNotStoppedInTheMiddleByAClickOnAdd) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Ling");
    Boxes.ThenFile(MakePicture("lunch.jpg"));
    ClickOn(Editor().ibAssignPicture);
    Closer closer;
    int clicks = 0;
    // Behind the text, and before the picture: while the favourites are listed anew.
    Main().files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind != "write" || clicks > 0) return;
        ++clicks;
        Later([this] {
            EXPECT_TRUE(Main().editor.Busy());
            EXPECT_FALSE(Folder.Exists(Photo("7.jpg")));
            ClickOn(Main().ui.ibAdd);
        });
    });
    ClickOn(Editor().ibAdd);
    Main().files.Watch(nullptr);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(closer.Closed, 0);
    EXPECT_FALSE(EditorShown());
    EXPECT_TRUE(Folder.Exists(Photo("7.jpg")));
    ClickOn(Main().ui.ibAdd);
    EXPECT_EQ(closer.Closed, 1) << "and behind the save it opens again";
}

class ASaveBesideTheViewer : public ASaveUnderWay {
  protected:
    std::string CommandLine() const override { return "/E"; }
};

TEST_F(ASaveBesideTheViewer, LetsNothingBeTypedThere) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Ling");
    ASSERT_TRUE(Main().viewer.ShowRecipe(4));
    ASSERT_FALSE(Main().ui.rtbSee.Locked());
    const std::string before = Main().ui.rtbSee.Text();
    During([&] {
        EXPECT_TRUE(Main().ui.rtbSee.Locked());
        QTest::keyClicks(Main().ui.rtbSee.Native(), "lost");
    });
    EXPECT_EQ(Main().ui.rtbSee.Text(), before);
    EXPECT_TRUE(Main().editor.InPlaceEdit()) << "typing goes on";
}

TEST_F(ASaveBesideTheViewer, DoesNotOpenItByShowingARecipe) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Ling");
    ASSERT_TRUE(Main().viewer.ShowRecipe(4));
    During([&] {
        EXPECT_TRUE(Main().viewer.ShowRecipe(5));
        EXPECT_TRUE(Main().ui.rtbSee.Locked());
        QTest::keyClicks(Main().ui.rtbSee.Native(), "lost");
        EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 7), "Own Roe");
    });
    EXPECT_FALSE(Main().ui.rtbSee.Locked()) << "typing goes on";
}

TEST_F(ASaveBesideTheViewer, LeavesItLockedWhenItHasNoRecipeAnyMore) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Ling");
    ASSERT_TRUE(Main().viewer.ShowRecipe(4));
    ASSERT_FALSE(Main().ui.rtbSee.Locked());
    During([&] {
        Main().viewer.ShowRecipe(6);  // deleted
        EXPECT_EQ(Main().viewer.RecipeInBox, 0);
    });
    EXPECT_TRUE(Main().ui.rtbSee.Locked());
}

TEST_F(ASaveBesideTheViewer, LeavesItLockedOverTheRecipeInTheEditorWhenItIsRefused) {
    ASSERT_TRUE(Main().viewer.ShowRecipe(4));
    OpenOn(4);
    Ctrl(Qt::Key_A);
    Press(Qt::Key_Delete);
    ASSERT_TRUE(Main().ui.rtbSee.Locked());
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Boxes.Shown.size(), 1U) << "there is no title";
    EXPECT_TRUE(Main().ui.rtbSee.Locked());
    EXPECT_FALSE(Main().editor.InPlaceEdit());
}

TEST_F(ASaveBesideTheViewer, OpensItToTheRecipeThatWasAdded) {
    OpenOn(4);
    ClickOn(Editor().ibCancel);
    ASSERT_TRUE(Main().ui.rtbSee.Locked());
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Ling");
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Main().viewer.CurrentRecipe(), 7);
    EXPECT_FALSE(Main().ui.rtbSee.Locked());
    EXPECT_TRUE(Main().editor.InPlaceEdit());
    EXPECT_FALSE(Main().viewer.Modified);
}

TEST_F(ASaveBesideTheViewer, DoesNotOpenItByItsKey) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Ling");
    ASSERT_TRUE(Main().viewer.ShowRecipe(4));
    Focus(2);
    During([&] {
        Key(Qt::Key_E);
        EXPECT_TRUE(Main().ui.rtbSee.Locked());
    });
    Focus(2);
    Key(Qt::Key_E);
    EXPECT_FALSE(Main().ui.rtbSee.Locked());
}

}  // namespace
}  // namespace larder
