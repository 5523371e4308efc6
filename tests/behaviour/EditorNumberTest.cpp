// The number under which the editor stores a new recipe is not always the one that it foresaw, nor
// one that nothing else is known by.

#include <filesystem>
#include <string>

#include "behaviour/support/EditorBook.h"
#include "store/RecordChange.h"
#include "support/DataFolder.h"

namespace larder {
namespace {

using test::EditorBook;
using test::IndexBytes;

class ANewRecipesNumber : public EditorBook {
  protected:
    void Assign(const std::string& nativePath) {
        Boxes.ThenFile(nativePath);
        ClickOn(Editor().ibAssignPicture);
    }
    bool InSet(int number) { return Main().pictures.HasPicture(std::to_string(number)); }
    std::string TitleOf(int number) { return Main().store.GetRecipeTitle(number); }
};

// Another program has added "Dab" since a new recipe was begun, and it is counted.
class CountedMeanwhile : public ANewRecipesNumber {
  protected:
    void SetUp() override {
        ANewRecipesNumber::SetUp();
        OpenNew();
        foreseen = Editor().lngRecipeNum;
        TypeAnew(Editor().rtbTitle, "Ling");
        const std::string text = Folder.Read("Data/Custom Recipes.ydb");
        const std::string index = Folder.Read("Data/Custom Recipes Index.ind");
        const auto position = static_cast<std::int32_t>(text.size()) + 1;
        Folder.Write("Data/Custom Recipes.ydb", text + "Dab\r\n{\\rtf1 Dab}\r\n");
        Folder.Write("Data/Custom Recipes Index.ind", index + IndexBytes({position}));
        Main().files.CloseAll();
        Main().store.RecalculateTotalRecipes();
        ASSERT_EQ(TitleOf(foreseen), "Dab");
    }
    // Whether the new one may go is asked: the two have the same number, and are not the same.
    void EditDab(Dialogs::Answer mayGo) {
        Boxes.Then(mayGo);
        Main().editor.LoadRecipeToUpdate(foreseen);
        ASSERT_EQ(Boxes.Shown.size(), 1U);
        ASSERT_TRUE(EditorShown());
    }
    int foreseen = 0;
};

TEST_F(CountedMeanwhile, IsNotTheNumberThatANewRecipeGets) {
    EditDab(Dialogs::Answer::No);
    ClickOn(Editor().ibAdd);
    EXPECT_FALSE(EditorShown());
    EXPECT_EQ(TitleOf(foreseen), "Dab");
    EXPECT_EQ(TitleOf(foreseen + 1), "Ling");
}

TEST_F(CountedMeanwhile, IsEditedInThePlaceOfANewRecipeThatMayGo) {
    EditDab(Dialogs::Answer::Yes);
    EXPECT_EQ(Editor().window.Caption(), "Edit Recipe #" + std::to_string(foreseen));
    EXPECT_EQ(Editor().rtbRecipe.Text(), "Dab");
    Editor().rtbRecipe.SetFocus();
    Press(Qt::Key_Home, Qt::ControlModifier);
    Type("Fried ");
    ClickOn(Editor().ibAdd);
    EXPECT_FALSE(EditorShown());
    EXPECT_EQ(TitleOf(foreseen), "Fried Dab");
    EXPECT_EQ(Main().store.TotalNumRecords, foreseen) << "none was added";
}

// A start that could not read what an adding of recipe 7 that was cut short has left: its half is
// counted until the next write takes it back.
class BesideTheHalfOfAnother : public ANewRecipesNumber {
  protected:
    void SetUp() override {
        ANewRecipesNumber::SetUp();
        Close();
        const std::string journal = AddHalf();
        const std::filesystem::path file = Folder.Native("Data/Recipes Temp.ydb");
        std::filesystem::create_symlink(file.filename(), file);
        ASSERT_TRUE(Restart());
        ASSERT_EQ(Boxes.Shown.size(), 1U);
        ASSERT_TRUE(Boxes.Shown[0].Text.starts_with("The last change of a recipe can't be"));
        ASSERT_EQ(Main().store.TotalNumRecords, 7);
        std::filesystem::remove(file);
        Folder.Write("Data/Recipes Temp.ydb", journal);
        Boxes.Shown.clear();
        const std::string path = MakePicture("lunch.jpg");
        OpenNew();
        ASSERT_EQ(Editor().lngRecipeNum, 8);
        TypeAnew(Editor().rtbTitle, "Ling");
        Assign(path);
    }
    // Returns the journal of it.
    std::string AddHalf() {
        const std::string text = Folder.Read("Data/Custom Recipes.ydb");
        const std::string index = Folder.Read("Data/Custom Recipes Index.ind");
        const std::string record = "Half\r\n{\\rtf1 Half}\r\n";
        RecordChange change;
        change.Adds = true;
        change.TextLength = static_cast<std::int64_t>(text.size());
        change.IndexLength = static_cast<std::int64_t>(index.size());
        change.Position = static_cast<std::int32_t>(text.size()) + 1;
        change.SetNew(record);
        Folder.Write("Data/Custom Recipes.ydb", text + record.substr(0, 10));
        Folder.Write("Data/Custom Recipes Index.ind", index + IndexBytes({change.Position}));
        return JournalOf(change);
    }
    void ExpectStoredOnceAsSeven() {
        EXPECT_FALSE(EditorShown()) << "it would be added once more";
        EXPECT_EQ(Main().store.TotalNumRecords, 7);
        EXPECT_EQ(TitleOf(7), "Ling");
        EXPECT_EQ(Folder.Read(Photo("7.jpg")), Folder.Read("lunch.jpg"));
        EXPECT_FALSE(Folder.Exists(Photo("8.jpg")));
        EXPECT_TRUE(InSet(7));
        EXPECT_FALSE(InSet(8));
        EXPECT_EQ(Main().viewer.CurrentRecipe(), 7);
    }
};

TEST_F(BesideTheHalfOfAnother, IsTheOneThatTheRecipeItsPictureAndTheFavouritesGet) {
    ClickOn(Editor().ibAdd);
    EXPECT_TRUE(Boxes.Shown.empty());
    ExpectStoredOnceAsSeven();
    const std::string categories = Folder.Read("Data/Categories.ctg");
    EXPECT_NE(categories.find("MY FAVORITES\r\n 4 5 7 \r\n"), std::string::npos) << categories;
    EXPECT_NE(categories.find("WITH PICTURES\r\n 1 7 \r\n"), std::string::npos) << categories;
}

TEST_F(BesideTheHalfOfAnother, IsKnownThoughSomethingBehindTheWriteFails) {
    const auto counted = Main().store.OnTotalRecipes;
    Main().store.OnTotalRecipes = [calls = 0](std::int32_t) mutable {
        if (++calls == 2) throw Failure(failure::DeviceError, "test");  // the first is of the half
    };
    ClickOn(Editor().ibAdd);
    Main().store.OnTotalRecipes = counted;
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_NE(Boxes.Shown[0].Text.find(FailureText(failure::DeviceError)), std::string::npos);
    ExpectStoredOnceAsSeven();
}

// An index of the stock that has fewer entries than it had: each own recipe has another number, and
// the next new one that of recipe 5, which has a picture.
class BesideACutStock : public ANewRecipesNumber {
  protected:
    void SetUp() override {
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 5 ";
        ANewRecipesNumber::SetUp();
        Main().pictures.AddToAllWithPicture(5);
        MakePicture(Photo("5.jpg"), 30, 30);
        picture_ = Folder.Read(Photo("5.jpg"));
        whole_ = Folder.Read("Data/Recipes Index.ind");
        Close();
        Folder.Write("Data/Recipes Index.ind", whole_.substr(0, 4));
        ASSERT_TRUE(Restart());
        OpenNew();
        ASSERT_EQ(Editor().lngRecipeNum, 5);
        TypeAnew(Editor().rtbTitle, "Ling");
    }
    // With the index whole again every recipe has its own picture, or none.
    void ExpectPicturesAsTheyWere() {
        EXPECT_FALSE(EditorShown());
        EXPECT_EQ(TitleOf(5), "Ling");
        Close();
        Folder.Write("Data/Recipes Index.ind", whole_);
        ASSERT_TRUE(Restart());
        EXPECT_EQ(TitleOf(5), "Own Roe");
        EXPECT_EQ(TitleOf(7), "Ling");
        EXPECT_TRUE(InSet(5));
        EXPECT_FALSE(InSet(7));
        EXPECT_EQ(Folder.Read(Photo("5.jpg")), picture_);
        for (const char* name : {"5.gif", "5.bmp", "7.jpg", "7.gif", "7.bmp"})
            EXPECT_FALSE(Folder.Exists(Photo(name))) << name;
    }

  private:
    std::string picture_;
    std::string whole_;
};

TEST_F(BesideACutStock, OfARecipeWithoutAPictureCostsNoOtherRecipeItsOwn) {
    ClickOn(Editor().ibAdd);
    EXPECT_TRUE(Boxes.Shown.empty());
    ExpectPicturesAsTheyWere();
}

TEST_F(BesideACutStock, TakesNoPictureAndThatIsTold) {
    Assign(MakePicture("lunch.jpg"));
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Could not copy the picture.");
    ExpectPicturesAsTheyWere();
}

TEST_F(BesideACutStock, TakesNoPictureOfAnotherKindEither) {
    Assign(MakePicture("lunch.gif"));
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Could not copy the picture.");
    ExpectPicturesAsTheyWere();
}

TEST_F(BesideACutStock, TakesThePictureThatIsAssignedByEditing) {
    ClickOn(Editor().ibAdd);
    OpenOn(5);
    Boxes.Then(Dialogs::Answer::Yes);  // another recipe's is there
    Assign(MakePicture("lunch.jpg"));
    ClickOn(Editor().ibAdd);
    EXPECT_FALSE(EditorShown());
    EXPECT_EQ(Folder.Read(Photo("5.jpg")), Folder.Read("lunch.jpg"));
}

}  // namespace
}  // namespace larder
