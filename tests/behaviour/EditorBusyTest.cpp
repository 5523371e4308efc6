// While a recipe is being stored events run, and none of them may take it or its windows away.

#include <functional>
#include <string>
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

}  // namespace
}  // namespace larder
