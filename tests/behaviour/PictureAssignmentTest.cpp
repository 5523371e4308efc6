#include "edit/PictureAssignment.h"

#include <filesystem>

#include "behaviour/support/EditorBook.h"
#include "behaviour/support/EventCount.h"
#include "support/Unprivileged.h"

namespace larder {
namespace {

using test::EditorBook;

// Works on the own recipes 4 and 5; what has to do with storing a new one stands elsewhere.
class ARecipesPicture : public EditorBook {
  protected:
    PictureAssignment& Picture() { return Editor().picture; }
    void Assign(const std::string& nativePath) {
        Boxes.ThenFile(nativePath);
        ClickOn(Editor().ibAssignPicture);
    }
    void Update() {
        ClickOn(Editor().ibAdd);
        EXPECT_FALSE(EditorShown());
    }
    bool InSet(int number) { return Main().pictures.HasPicture(std::to_string(number)); }
    std::string LastBox() const { return Boxes.Shown.empty() ? "" : Boxes.Shown.back().Text; }
};

TEST_F(ARecipesPicture, IsAskedForWithTheFilterOfThePicturesThatCanBeShown) {
    OpenOn(4);
    Assign(MakePicture("lunch.jpg"));
    ASSERT_EQ(Boxes.FilesAsked.size(), 1U);
    EXPECT_EQ(Boxes.FilesAsked[0].Filter, "Pictures (*.bmp;*.jpg;*.gif)|*.bmp;*.jpg;*.gif");
    EXPECT_TRUE(Main().cdgDialogBox.CancelError);
    EXPECT_EQ(Main().cdgDialogBox.Flags, 2627593U);
}

TEST_F(ARecipesPicture, ThatWasChosenIsShownInItsFrameAndNothingIsCopiedYet) {
    OpenOn(4);
    WatchFiles();
    Assign(MakePicture("lunch.JPG", 600, 200));
    EXPECT_EQ(Picture().NewPictureFileName(), PathOfPhoto("4.jpg"));
    EXPECT_EQ(Editor().ibAssignPicture.Caption(), "Change Picture");
    EXPECT_EQ(Editor().ibAssignPicture.ToolTipText(), "Change assigned picture");
    EXPECT_TRUE(Editor().ibRemovePicture.Visible());
    EXPECT_TRUE(Picture().booPictureChanged);
    EXPECT_TRUE(Changes.empty());
    const Rectangle& frame = Editor().shpPic;
    const Rectangle& shown = Editor().imgPicPreview.Place();
    EXPECT_FLOAT_EQ(shown.Width, frame.Width);
    EXPECT_NEAR(shown.Width / shown.Height, 3.0F, 0.01F);
    EXPECT_NEAR(shown.Top - frame.Top, (frame.Height - shown.Height) / 2, 1.0F);
    EXPECT_FALSE(Editor().imgNoPicture.Visible());
}

TEST_F(ARecipesPicture, IsCopiedByteForByteAndJoinsTheSetWhenTheRecipeIsSaved) {
    const std::string path = MakePicture("lunch.jpg");
    OpenOn(4);
    Assign(path);
    Update();
    EXPECT_EQ(Folder.Read(Photo("4.jpg")), Folder.Read("lunch.jpg"));
    EXPECT_TRUE(InSet(4));
    EXPECT_NE(Folder.Read("Data/Categories.ctg").find(" 1 4 "), std::string::npos);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 4);
    EXPECT_TRUE(Main().ui.frPic.Visible()) << "the recipe is shown on its picture";
}

TEST_F(ARecipesPicture, GivesTheLineOfTheListItsIconAtOnce) {
    ASSERT_EQ(ShownNumbers(), (std::vector<int>{4, 5}));
    OpenOn(5);
    Assign(MakePicture("lunch.gif"));
    Update();
    EXPECT_EQ(List(2).Item(1).SmallIcon(), 0);
    EXPECT_EQ(List(2).Item(2).SmallIcon(), 2);
    Main().lists.ShowListItems(2, 1, true);
    EXPECT_EQ(List(2).Item(2).SmallIcon(), 2) << "and its entry in the list behind";
}

TEST_F(ARecipesPicture, GivesTheTitleOfItsLineTheColourOfOneWithAPictureAtOnce) {
    const auto color = [this](int line) { return List(2).Item(line).SubForeColor(2); };
    const std::int32_t without = color(2);
    OpenOn(5);
    Assign(MakePicture("lunch.gif"));
    Update();
    const std::int32_t with = color(2);
    EXPECT_NE(with, without);
    EXPECT_EQ(color(1), without);
    Main().lists.ShowListItems(2, 1, true);
    EXPECT_EQ(color(2), with) << "and its entry in the list behind";
    OpenOn(5);
    Boxes.Then(Dialogs::Answer::Yes);
    ClickOn(Editor().ibRemovePicture);
    Update();
    EXPECT_EQ(color(2), without);
    Main().lists.ShowListItems(2, 1, true);
    EXPECT_EQ(color(2), without);
}

TEST_F(ARecipesPicture, AmongAllRecipesChangesTheIconAlone) {
    ClickCategory("ALL RECIPES");
    ASSERT_EQ(ShownNumbers(), (std::vector<int>{1, 2, 3, 4, 5}));
    const std::int32_t color = List(2).Item(4).SubForeColor(2);
    OpenOn(4);
    Assign(MakePicture("lunch.gif"));
    Update();
    EXPECT_EQ(List(2).Item(4).SmallIcon(), 2);
    EXPECT_EQ(List(2).Item(4).SubForeColor(2), color);
}

TEST_F(ARecipesPicture, ThatIsRemovedHasTheGroundOfTheListDrawnAnew) {
    const auto drawnByStoring = [this] {
        const test::EventCount paints(Main().ui.imgWaterMark(2).Native(), QEvent::Paint);
        Picture().Store(4, false);  // and no event runs
        return paints.Count;
    };
    OpenOn(4);
    Assign(MakePicture("lunch.jpg"));
    const int assigned = drawnByStoring();
    Picture().SetNewPictureFileName("");
    EXPECT_EQ(drawnByStoring(), assigned + 1);
}

TEST_F(ARecipesPicture, BringsTheSelectedLineInStepToo) {
    OpenOn(4);
    Assign(MakePicture("lunch.gif"));
    PressLine(2, 2);
    MakePicture(Photo("5.jpg"));
    Update();
    EXPECT_EQ(List(2).Item(1).SmallIcon(), 2);
    EXPECT_EQ(List(2).Item(2).SmallIcon(), 2) << "as its file says";
}

TEST_F(ARecipesPicture, ThatIsSmallFillsItsFrameInOneDirection) {
    OpenOn(4);
    Assign(MakePicture("lunch.jpg", 30, 60));
    const Rectangle& frame = Editor().shpPic;
    const Rectangle& shown = Editor().imgPicPreview.Place();
    EXPECT_FLOAT_EQ(shown.Height, frame.Height);
    EXPECT_NEAR(shown.Height / shown.Width, 2.0F, 0.01F);
    EXPECT_NEAR(shown.Left - frame.Left, (frame.Width - shown.Width) / 2, 1.0F);
}

TEST_F(ARecipesPicture, ChosenAndCancelledChangesNothingOnTheDisk) {
    OpenOn(4);
    WatchFiles();
    Assign(MakePicture("lunch.jpg"));
    ClickOn(Editor().ibCancel);
    EXPECT_TRUE(Changes.empty());
    EXPECT_FALSE(Folder.Exists(Photo("4.jpg")));
    EXPECT_FALSE(InSet(4));
}

TEST_F(ARecipesPicture, OfANewRecipeIsNamedByTheNumberThatItWillHave) {
    OpenNew();
    Assign(MakePicture("lunch.bmp"));
    EXPECT_EQ(Picture().NewPictureFileName(), PathOfPhoto("7.bmp"));
}

TEST_F(ARecipesPicture, OfAnotherKindTakesThePlaceOfTheOldOne) {
    MakePicture(Photo("4.jpg"));
    Folder.Write(Photo("5.jpg"), "another recipe's");
    OpenOn(4);
    Boxes.Then(Dialogs::Answer::Yes);
    Assign(MakePicture("lunch.gif"));
    EXPECT_EQ(LastBox(), "The Recipe already has a pictue assigned. Do you want to overwrite it?");
    Update();
    EXPECT_FALSE(Folder.Exists(Photo("4.jpg")));
    EXPECT_EQ(Folder.Read(Photo("4.gif")), Folder.Read("lunch.gif"));
    EXPECT_TRUE(Folder.Exists(Photo("5.jpg")));
}

TEST_F(ARecipesPicture, IsKeptWhenTheUserDoesNotWantToOverwriteIt) {
    MakePicture(Photo("4.jpg"));
    OpenOn(4);
    EXPECT_EQ(Picture().NewPictureFileName(), PathOfPhoto("4.jpg"));
    Boxes.Then(Dialogs::Answer::No);
    ClickOn(Editor().ibAssignPicture);
    EXPECT_TRUE(Boxes.FilesAsked.empty());
    EXPECT_FALSE(Picture().booPictureChanged);
}

TEST_F(ARecipesPicture, RemovedAndAssignedAgainIsCopied) {
    MakePicture(Photo("4.jpg"));
    OpenOn(4);
    Main().cdgDialogBox.FileName = "C:\\lunch.jpg";
    Boxes.Then(Dialogs::Answer::Yes);
    ClickOn(Editor().ibRemovePicture);
    EXPECT_EQ(LastBox(), "Are you sure you want to remove picture from this recipe?");
    EXPECT_EQ(Main().cdgDialogBox.FileName, "");
    EXPECT_EQ(Picture().NewPictureFileName(), "");
    EXPECT_EQ(Editor().ibAssignPicture.Caption(), "Assign Picture");
    EXPECT_FALSE(Editor().ibRemovePicture.Visible());
    Assign(MakePicture("other.bmp"));
    EXPECT_EQ(Picture().NewPictureFileName(), PathOfPhoto("4.bmp"));
    Update();
    EXPECT_FALSE(Folder.Exists(Photo("4.jpg")));
    EXPECT_EQ(Folder.Read(Photo("4.bmp")), Folder.Read("other.bmp"));
}

TEST_F(ARecipesPicture, RemovedGoesFromTheDiskTheSetAndTheLineWhenTheRecipeIsSaved) {
    const std::string path = MakePicture("lunch.jpg");
    OpenOn(4);
    Assign(path);
    Update();
    ASSERT_TRUE(InSet(4));
    OpenOn(4);
    Boxes.Then(Dialogs::Answer::Yes);
    ClickOn(Editor().ibRemovePicture);
    EXPECT_TRUE(Folder.Exists(Photo("4.jpg")));
    Update();
    EXPECT_FALSE(Folder.Exists(Photo("4.jpg")));
    EXPECT_FALSE(InSet(4));
    EXPECT_EQ(List(2).Item(1).SmallIcon(), 0);
    EXPECT_TRUE(Folder.Exists("lunch.jpg")) << "the user's own file";
}

TEST_F(ARecipesPicture, NotRemovedAfterAllStays) {
    MakePicture(Photo("4.jpg"));
    OpenOn(4);
    Boxes.Then(Dialogs::Answer::No);
    ClickOn(Editor().ibRemovePicture);
    EXPECT_EQ(Picture().NewPictureFileName(), PathOfPhoto("4.jpg"));
    EXPECT_FALSE(Picture().booPictureChanged);
}

TEST_F(ARecipesPicture, NamedJpegIsRefusedAndTheDialogOpensAgain) {
    const std::string jpeg = Folder.Native("lunch.jpeg");
    std::filesystem::copy(MakePicture("good.jpg"), jpeg);
    OpenOn(4);
    Boxes.ThenFile(jpeg);
    Boxes.ThenFile(Folder.Native("good.jpg"));
    ClickOn(Editor().ibAssignPicture);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(LastBox(), "Invalid file type. Please try another file.");
    EXPECT_EQ(Boxes.FilesAsked.size(), 2U);
    EXPECT_EQ(Picture().NewPictureFileName(), PathOfPhoto("4.jpg"));
}

TEST_F(ARecipesPicture, ChosenEarlierStaysWhenALaterDialogIsCancelled) {
    const std::string path = MakePicture("lunch.jpg");
    OpenOn(4);
    Assign(path);
    Boxes.Then(Dialogs::Answer::Yes);
    ClickOn(Editor().ibAssignPicture);  // and the script of files is at its end: cancelled
    EXPECT_EQ(Main().cdgDialogBox.FileName, "");
    EXPECT_EQ(Picture().NewPictureFileName(), PathOfPhoto("4.jpg"));
    EXPECT_FALSE(Editor().imgPicPreview.Shown().IsEmpty());
    Update();
    EXPECT_EQ(Folder.Read(Photo("4.jpg")), Folder.Read("lunch.jpg"));
}

TEST_F(ARecipesPicture, IsTheOneChosenHereWhateverTheDialogIsUsedForLater) {
    const std::string path = MakePicture("lunch.jpg");
    OpenOn(4);
    Assign(path);
    Main().cdgDialogBox.FileName = Main().objFSO.Alias(MakePicture("printed.bmp"));
    Update();
    EXPECT_EQ(Folder.Read(Photo("4.jpg")), Folder.Read("lunch.jpg"));
}

TEST_F(ARecipesPicture, ThatIsTheRecipesOwnFileIsNotDeleted) {
    const std::string own = MakePicture(Photo("4.jpg"));
    const std::string bytes = Folder.Read(Photo("4.jpg"));
    OpenOn(4);
    Boxes.Then(Dialogs::Answer::Yes);
    Assign(own);
    Update();
    EXPECT_EQ(Folder.Read(Photo("4.jpg")), bytes);
    EXPECT_TRUE(InSet(4));
}

TEST_F(ARecipesPicture, WhosePathTheCodePageCannotSpellIsCopiedToo) {
    Folder.MakeFolder("\xD0\x9E\xD0\xB1\xD0\xB5\xD0\xB4");
    const std::string path = MakePicture("\xD0\x9E\xD0\xB1\xD0\xB5\xD0\xB4/\xE9\xAD\x9A.gif");
    OpenOn(4);
    Assign(path);
    EXPECT_EQ(Picture().NewPictureFileName(), PathOfPhoto("4.gif"));
    Update();
    EXPECT_EQ(Folder.Read(Photo("4.gif")),
              Folder.Read("\xD0\x9E\xD0\xB1\xD0\xB5\xD0\xB4/\xE9\xAD\x9A.gif"));
}

TEST_F(ARecipesPicture, ThatCannotBeShownIsToldAndTheEarlierChoiceStays) {
    Folder.MakeFolder("folder.jpg");
    Folder.Write("empty.jpg", "");
    Folder.Write("text.gif", "no picture at all");
    Folder.Write("large.bmp", "");
    std::filesystem::resize_file(Folder.Native("large.bmp"), 500'000'000);
    MakePicture("hidden.jpg");
    std::filesystem::permissions(Folder.Native("hidden.jpg"), std::filesystem::perms::none);
    const std::string good = MakePicture("good.jpg");
    OpenOn(4);
    Assign(good);
    for (const char* bad :
         {"folder.jpg", "empty.jpg", "text.gif", "large.bmp", "hidden.jpg", "missing.jpg"}) {
        const test::Unprivileged user;
        const std::size_t told = Boxes.Shown.size();
        Boxes.Then(Dialogs::Answer::Yes);
        Assign(Folder.Native(bad));
        EXPECT_EQ(Boxes.Shown.size(), told + 2) << bad << ": the question and what is wrong";
        EXPECT_TRUE(LastBox().starts_with(std::string("The picture can't be shown.\n") + bad))
            << LastBox();
        EXPECT_EQ(Main().cdgDialogBox.FileName, "") << bad;
        EXPECT_EQ(Picture().NewPictureFileName(), PathOfPhoto("4.jpg")) << bad;
        EXPECT_FALSE(Editor().imgPicPreview.Shown().IsEmpty()) << bad;
    }
    Update();
    EXPECT_EQ(Folder.Read(Photo("4.jpg")), Folder.Read("good.jpg"));
}

TEST_F(ARecipesPicture, ThatCannotBeShownIsToldByItsNameAndWhatIsWrong) {
    Folder.Write("caf\xC3\xA9.gif", "no picture at all");
    OpenOn(4);
    Assign(Folder.Native("caf\xC3\xA9.gif"));
    EXPECT_EQ(LastBox(),
              "The picture can't be shown.\ncaf\xE9.gif\n" + FailureText(failure::InvalidPicture));
}

TEST_F(ARecipesPicture, OfARecipeThatIsBrokenDoesNotKeepTheEditorShut) {
    Folder.Write(Photo("4.jpg"), "broken");
    OpenOn(4);
    EXPECT_EQ(Picture().NewPictureFileName(), PathOfPhoto("4.jpg"));
    EXPECT_TRUE(Editor().imgPicPreview.Shown().IsEmpty());
}

TEST_F(ARecipesPicture, ThatCannotBeCopiedIsToldAndTheOldOneStays) {
    MakePicture(Photo("4.jpg"));
    const std::string before = Folder.Read(Photo("4.jpg"));
    for (const char* kind : {"write", "flush", "rename"}) {
        OpenOn(4);
        Boxes.Then(Dialogs::Answer::Yes);
        Assign(MakePicture("lunch.gif"));
        Main().files.Watch([kind](const NumberedFiles::Access& access) {
            const bool ofPicture = access.Path.find("4.gif") != std::string_view::npos;
            if (access.Kind == kind && ofPicture) throw Failure(failure::DiskFull, "test");
        });
        Update();
        EXPECT_EQ(LastBox(), "Could not copy the picture.") << kind;
        EXPECT_EQ(Folder.Read(Photo("4.jpg")), before) << kind;
        EXPECT_FALSE(Folder.Exists(Photo("4.gif"))) << kind;
        EXPECT_FALSE(Folder.Exists(Photo("4.gif.new"))) << kind;
        EXPECT_TRUE(InSet(4)) << kind;
    }
}

TEST_F(ARecipesPicture, ThatVanishedBeforeTheRecipeIsSavedIsTold) {
    const std::string path = MakePicture("lunch.jpg");
    OpenOn(4);
    Assign(path);
    Folder.Delete("lunch.jpg");
    Update();
    EXPECT_EQ(LastBox(), "Could not copy the picture.");
}

TEST_F(ARecipesPicture, MakesTheFolderOfPicturesWhenThereIsNone) {
    Folder.Delete("Data/Food Photos");
    const std::string path = MakePicture("lunch.jpg");
    OpenOn(4);
    Assign(path);
    Update();
    EXPECT_EQ(Folder.Read(Photo("4.jpg")), Folder.Read("lunch.jpg"));
}

TEST_F(ARecipesPicture, FromAnEarlierOpeningDoesNotStandInTheNext) {
    MakePicture(Photo("4.jpg"));
    OpenOn(4);
    EXPECT_FALSE(Editor().imgPicPreview.Shown().IsEmpty());
    ClickOn(Editor().ibCancel);
    OpenNew();
    EXPECT_TRUE(Editor().imgPicPreview.Shown().IsEmpty());
    EXPECT_TRUE(Editor().imgNoPicture.Visible());
    EXPECT_EQ(Picture().NewPictureFileName(), "");
}

TEST_F(ARecipesPicture, AnEmptyNameClearsThePreview) {
    OpenOn(4);
    Picture().ShowPreview(Main().objFSO.Alias(MakePicture("lunch.jpg")));
    Picture().ShowPreview("");
    EXPECT_TRUE(Editor().imgPicPreview.Shown().IsEmpty());
}

}  // namespace
}  // namespace larder
