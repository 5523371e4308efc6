#include <gtest/gtest.h>

#include <QCursor>
#include <QWidget>

#include <filesystem>
#include <string>

#include "app/frmMain.h"
#include "behaviour/support/MeasuredLists.h"
#include "platform/Failure.h"
#include "store/FileNumbers.h"
#include "support/DiskLimit.h"
#include "support/Unprivileged.h"

namespace larder::test {
namespace {

constexpr const char* FileName = "Data/Categories.ctg";

class CategoryFile : public MainWindowFixture {
  protected:
    void SetUp() override {
        Book.AddManyStock(30);
        Book.AddManyOwn(2);
        Book.AddOwn("");
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 2 4 ";
        Book.Numbers("SOUPS") = " 5 6 33 ";
        Book.Numbers("STEWS") = "";
    }
    void StartIt() { ASSERT_TRUE(Start()); }
    // The start fails with a box that names the file.
    void ExpectRefused() {
        EXPECT_FALSE(Restart());
        EXPECT_EQ(Main().ExitStatus(), 1);
        ASSERT_EQ(Boxes.Shown.size(), 1U);
        EXPECT_NE(Boxes.Shown[0].Text.find("Categories.ctg"), std::string::npos)
            << Boxes.Shown[0].Text;
        EXPECT_EQ(Boxes.Shown[0].Icon, Dialogs::Icon::Critical);
    }
};

TEST_F(CategoryFile, EachEntryIsReadWithItsNumbers) {
    StartIt();
    const VirtualList& list = Main().VList[0];
    ASSERT_EQ(list.Count(), 8);
    EXPECT_EQ(list.Peek(7)->Text, "     SOUPS");
    EXPECT_EQ(list.Peek(7)->Tag, " 5 6 33 ");
    EXPECT_EQ(list.Peek(7)->Num, 0);
    EXPECT_EQ(list.Peek(8)->Tag, "");
    EXPECT_FALSE(Main().files.IsOpen(filenumber::Categories));
}

TEST_F(CategoryFile, TheCountInItsFirstLineIsIgnored) {
    Book.WriteTo(Folder);
    std::string text = Folder.Read(FileName);
    Folder.Write(FileName, " 4711 " + text.substr(text.find('\r')));
    ASSERT_TRUE(Restart());
    EXPECT_EQ(Main().store.TotalRecipes(), 32);
    EXPECT_EQ(Main().VList[0].Count(), 8);
}

TEST_F(CategoryFile, WithoutTheCategoryOfPicturesTheStartEndsWithAMessage) {
    Book.Categories = {{"MY FAVORITES", " "}, {"ALL RECIPES", "*"}};
    Book.WriteTo(Folder);
    ExpectRefused();
}

TEST_F(CategoryFile, AMissingFileEndsTheStartWithAMessage) {
    Book.WriteTo(Folder);
    Folder.Delete(FileName);
    ExpectRefused();
}

TEST_F(CategoryFile, AnEmptyFileEndsTheStartWithAMessage) {
    Book.WriteTo(Folder);
    Folder.Write(FileName, "");
    ExpectRefused();
}

TEST_F(CategoryFile, ANameWithoutItsNumbersEndsTheStartWithAMessage) {
    Book.WriteTo(Folder);
    Folder.Write(FileName, Folder.Read(FileName) + "ORPHAN\r\n");
    ExpectRefused();
}

TEST_F(CategoryFile, TheSetOfPicturesIsTakenFromItsCategory) {
    StartIt();
    EXPECT_TRUE(Main().pictures.HasPicture("4"));
    EXPECT_FALSE(Main().pictures.HasPicture("5"));
}

TEST_F(CategoryFile, WritingGivesBackWhatWasRead) {
    StartIt();
    const std::string before = Folder.Read(FileName);
    Main().categories.UpdateCategoryFile();
    // The count is that of the recipes that are there: one of 33 is deleted.
    EXPECT_EQ(Folder.Read(FileName), " 32 " + before.substr(before.find('\r')));
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_FALSE(Main().files.IsOpen(filenumber::Categories));
}

TEST_F(CategoryFile, TheIndentationIsNotStoredAndComesBack) {
    StartIt();
    Main().categories.UpdateCategoryFile();
    EXPECT_NE(Folder.Read(FileName).find("\r\nSOUPS\r\n 5 6 33 \r\n"), std::string::npos);
    ASSERT_TRUE(Restart());
    EXPECT_EQ(Main().VList[0].Peek(7)->Text, "     SOUPS");
}

TEST_F(CategoryFile, WritingShowsTheListAnewWhereItStands) {
    StartIt();
    Main().LinesInList[0] = 4;
    Main().lists.ShowListItems(1, 3, true);
    List(1).Item(1).SetText("scribble");
    Main().categories.UpdateCategoryFile();
    EXPECT_EQ(List(1).Item(1).Text(), "VIDEO");
    EXPECT_EQ(Main().VList[0].CurrentIndex, 3);
}

// The disk refuses to take what is written under one name.
class FullDisk : public CategoryFile {
  protected:
    void Fill() {
        Main().files.Watch([](const NumberedFiles::Access& access) {
            if (access.Kind == "write") throw Failure(failure::DiskFull, "test");
        });
    }
    void Clear() { Main().files.Watch(nullptr); }
};

TEST_F(FullDisk, IsToldInAMessageWithTheDescription) {
    StartIt();
    Fill();
    Main().categories.UpdateCategoryFile();
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Error updating Favorites\n" + FailureText(failure::DiskFull));
    EXPECT_EQ(Boxes.Shown[0].Icon, Dialogs::Icon::Critical);
    EXPECT_EQ(Boxes.Shown[0].Buttons, Dialogs::Buttons::Ok);
}

TEST_F(FullDisk, LeavesTheLinesOnTheScreenAsTheyAre) {
    StartIt();
    Main().VList[0].PeekKey("SOUPS")->Tag = " 1 ";
    Fill();
    Main().categories.UpdateCategoryFile();
    EXPECT_EQ(List(1).Item(7).Tag, " 5 6 33 ");
    Clear();
    Main().categories.UpdateCategoryFile();
    EXPECT_EQ(List(1).Item(7).Tag, " 1 ");
}

TEST_F(FullDisk, LeavesTheOldFileWholeAndTheFileNumberFree) {
    StartIt();
    const std::string before = Folder.Read(FileName);
    Main().VList[0].Peek(7)->Tag = " 1 ";
    Fill();
    Main().categories.UpdateCategoryFile();
    EXPECT_EQ(Folder.Read(FileName), before);
    EXPECT_FALSE(Main().files.IsOpen(filenumber::Categories));
}

TEST_F(FullDisk, KeepsTheChangeForTheNextWrite) {
    StartIt();
    Main().VList[0].Peek(7)->Tag = " 1 ";
    Fill();
    Main().categories.UpdateCategoryFile();
    Clear();
    Main().categories.UpdateCategoryFile();
    EXPECT_NE(Folder.Read(FileName).find("SOUPS\r\n 1 \r\n"), std::string::npos);
    EXPECT_EQ(Boxes.Shown.size(), 1U);
}

// Whatever step of the writing fails, the old file is whole, the new one is gone, and the user is
// told.
class AFailedWriting : public CategoryFile {
  protected:
    void FailAt(const std::string& kind, const std::string& path) {
        StartIt();
        before_ = Folder.Read(FileName);
        Main().VList[0].PeekKey("SOUPS")->Tag = " 1 ";
        bool failed = false;
        Main().files.Watch([&](const NumberedFiles::Access& access) {
            if (failed || access.Kind != kind || !access.Path.ends_with(path)) return;
            failed = true;
            throw Failure(failure::PathAccess, "test");
        });
        Main().categories.UpdateCategoryFile();
        Main().files.Watch(nullptr);
        EXPECT_TRUE(failed);
        ExpectNothingLost();
    }
    void ExpectNothingLost() {
        EXPECT_EQ(Folder.Read(FileName), before_);
        EXPECT_FALSE(Folder.Exists("Data/Categories.ctg.new"));
        EXPECT_FALSE(Main().files.IsOpen(filenumber::Categories));
        ASSERT_EQ(Boxes.Shown.size(), 1U);
        EXPECT_EQ(Boxes.Shown[0].Text,
                  "Error updating Favorites\n" + FailureText(failure::PathAccess));
        EXPECT_EQ(List(1).Item(7).Tag, " 5 6 33 ");
        Main().categories.UpdateCategoryFile();
        EXPECT_NE(Folder.Read(FileName).find("SOUPS\r\n 1 \r\n"), std::string::npos);
        EXPECT_EQ(Boxes.Shown.size(), 1U);
    }

  private:
    std::string before_;
};

TEST_F(FullDisk, ThatTakesAPartOfWhatIsWrittenLeavesTheOldFileWhole) {
    StartIt();
    const std::string before = Folder.Read(FileName);
    ASSERT_GT(before.size(), 100U);
    // Each line is one write. The first limit ends one in the middle, the second at its beginning.
    const std::size_t line = before.find("ALL RECIPES WITH PICTURES");
    ASSERT_NE(line, std::string::npos);
    for (const std::size_t bytes : {line + 5, line}) {
        Main().favorites.AddToFavorites(static_cast<std::int32_t>(7 + Boxes.Shown.size()));
        const std::string whole = Folder.Read(FileName);
        Boxes.Shown.clear();
        {
            const DiskLimit limit(bytes);
            Main().favorites.AddToFavorites(20);
        }
        ASSERT_EQ(Boxes.Shown.size(), 1U) << bytes;
        EXPECT_EQ(Boxes.Shown[0].Text,
                  "Error updating Favorites\n" + FailureText(failure::DiskFull));
        EXPECT_EQ(Folder.Read(FileName), whole) << bytes;
        EXPECT_FALSE(Folder.Exists("Data/Categories.ctg.new")) << bytes;
        EXPECT_TRUE(Main().favorites.IsInFavorites(20)) << bytes;
        Main().favorites.RemoveFromFavorites(20);
    }
}

// The folder takes new files, the file of the categories is not to be written.
class ReadOnlyCategories : public CategoryFile {
  protected:
    void SetUp() override {
        CategoryFile::SetUp();
        StartIt();
        before_ = Folder.Read(FileName);
    }
    void Allow(bool writing) {
        namespace fs = std::filesystem;
        const auto writers =
            fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
        fs::permissions(Folder.Native(FileName), writing ? fs::perms::owner_write : writers,
                        writing ? fs::perm_options::add : fs::perm_options::remove);
    }
    void ExpectToldAndAsItIs() {
        ASSERT_EQ(Boxes.Shown.size(), 1U);
        EXPECT_EQ(Boxes.Shown[0].Text,
                  "Error updating Favorites\n" + FailureText(failure::PathAccess));
        EXPECT_EQ(Boxes.Shown[0].Icon, Dialogs::Icon::Critical);
        EXPECT_EQ(Folder.Read(FileName), before_);
        EXPECT_FALSE(Folder.Exists("Data/Categories.ctg.new"));
        EXPECT_TRUE(Main().favorites.IsInFavorites(3));
    }

  private:
    std::string before_;
};

TEST_F(ReadOnlyCategories, AReadOnlyCategoryFileIsToldAndStaysAsItIs) {
    Allow(false);
    Main().favorites.AddToFavorites(3);
    ExpectToldAndAsItIs();
    Allow(true);
    Main().favorites.AddToFavorites(4);
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_NE(Folder.Read(FileName).find("MY FAVORITES\r\n 3 4 \r\n"), std::string::npos);
}

TEST_F(ReadOnlyCategories, AFileThatTheUserHasNoRightToWriteCountsTheSame) {
    Allow(false);
    std::filesystem::permissions(Folder.Native("Data"), std::filesystem::perms::all);
    {
        const Unprivileged unprivileged;
        Main().favorites.AddToFavorites(3);
    }
    ExpectToldAndAsItIs();
}

TEST_F(AFailedWriting, AtTheOpeningLosesNothing) {
    FailAt("open", "Categories.ctg.new");
}

TEST_F(AFailedWriting, OfALineLosesNothing) {
    FailAt("write", "Categories.ctg.new");
}

TEST_F(AFailedWriting, AtTheFlushLosesNothing) {
    FailAt("flush", "Categories.ctg.new");
}

TEST_F(AFailedWriting, AtTheClosingLosesNothing) {
    FailAt("close", "Categories.ctg.new");
}

TEST_F(AFailedWriting, AtTheRenamingLosesNothing) {
    FailAt("rename", "Categories.ctg");
}

TEST_F(AFailedWriting, IsToldByItsOwnReasonWhenTheNewFileCannotBeTakenAwayEither) {
    StartIt();
    Main().files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "write") throw Failure(failure::DiskFull, "test");
        if (access.Kind == "delete") throw Failure(failure::PathAccess, "test");
    });
    Main().categories.UpdateCategoryFile();
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Error updating Favorites\n" + FailureText(failure::DiskFull));
}

// A name that comes again is no category, but it is the user's.
class ACategoryNamedTwice : public CategoryFile {
  protected:
    void StartWith(const std::string& extra) {
        Book.WriteTo(Folder);
        text_ = Folder.Read(FileName);
        const std::size_t stews = text_.find("STEWS");
        text_.insert(stews, extra);
        text_.replace(0, text_.find('\r'), " 32 ");
        Folder.Write(FileName, text_);
        ASSERT_TRUE(Restart());
    }
    std::string text_;
};

TEST_F(ACategoryNamedTwice, IsShownOnceWithItsFirstNumbers) {
    StartWith("SOUPS\r\n 7 \r\n");
    EXPECT_EQ(Main().VList[0].Count(), 8);
    EXPECT_EQ(Main().VList[0].PeekKey("SOUPS")->Tag, " 5 6 33 ");
}

TEST_F(ACategoryNamedTwice, KeepsItsLinesAndTheirPlaceWhenTheFileIsWritten) {
    StartWith("SOUPS\r\n 7 \r\nsoups\r\n 8 \r\nMY FAVORITES\r\n 9 \r\n");
    Main().categories.UpdateCategoryFile();
    EXPECT_EQ(Folder.Read(FileName), text_);
    Main().categories.LoadCategories();
    Main().categories.UpdateCategoryFile();
    EXPECT_EQ(Folder.Read(FileName), text_);
}

TEST_F(ACategoryNamedTwice, AtTheEndOfTheFileStaysThere) {
    Book.Categories.emplace_back("SOUPS", " 7 ");
    Book.WriteTo(Folder);
    ASSERT_TRUE(Restart());
    Main().favorites.AddToFavorites(3);
    const std::string text = Folder.Read(FileName);
    EXPECT_TRUE(text.ends_with("STEWS\r\n\r\nSOUPS\r\n 7 \r\n")) << text;
    EXPECT_NE(text.find("MY FAVORITES\r\n 3 \r\n"), std::string::npos);
}

// Loading again, when it fails, leaves what was loaded before.
class AFailedLoading : public CategoryFile {
  protected:
    void ExpectKept(int expectedFailure) {
        EXPECT_EQ(Ignoring([&] { Main().categories.LoadCategories(); }), expectedFailure);
        Main().files.Watch(nullptr);
        EXPECT_FALSE(Main().files.IsOpen(filenumber::Categories));
        EXPECT_EQ(Main().VList[0].Count(), 8);
        EXPECT_EQ(Shown(1).at(6), "     SOUPS");
        EXPECT_EQ(List(1).Item(7).Tag, " 5 6 33 ");
        EXPECT_TRUE(Main().pictures.HasPicture("4"));
        ClickCategory("SOUPS");
        EXPECT_EQ(ShownNumbers(), (std::vector<int>{5, 6})) << "33 was deleted";
    }
};

TEST_F(AFailedLoading, OfAFileThatIsGoneKeepsTheList) {
    StartIt();
    Folder.Delete(FileName);
    ExpectKept(failure::FileNotFound);
}

TEST_F(AFailedLoading, InTheMiddleOfAnEntryKeepsTheList) {
    StartIt();
    Folder.Write(FileName, Folder.Read(FileName) + "ORPHAN\r\n");
    ExpectKept(failure::InputPastEnd);
}

TEST_F(AFailedLoading, WithoutTheCategoryOfPicturesKeepsTheList) {
    StartIt();
    Folder.Write(FileName, " 1 \r\nMY FAVORITES\r\n\r\n");
    ExpectKept(failure::ElementNotFound);
}

TEST_F(AFailedLoading, OfTheFileAtAReadKeepsTheListAndClosesTheFile) {
    StartIt();
    Main().files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "read" && access.Number == filenumber::Categories) {
            throw Failure(failure::DeviceError, "test");
        }
    });
    ExpectKept(failure::DeviceError);
}

TEST_F(AFailedLoading, OfTheCountOfRecipesReadsNoCategories) {
    StartIt();
    bool categoriesRead = false;
    Main().files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind != "open") return;
        if (access.Number == filenumber::Categories) categoriesRead = true;
        if (access.Number == filenumber::CustomRecipesIndex) {
            throw Failure(failure::PathAccess, std::string(access.Path));
        }
    });
    const std::int32_t total = Main().store.TotalNumRecords;
    ExpectKept(failure::PathAccess);
    EXPECT_FALSE(categoriesRead);
    EXPECT_EQ(Main().store.TotalNumRecords, total);
}

TEST_F(CategoryFile, LoadingAgainOpensTheDatabaseAndShowsTheNewLines) {
    StartIt();
    Book.Numbers("SOUPS") = " 5 ";
    Book.Categories[7].first = "SALADS";
    Folder.Write(FileName, Book.CategoryFile());
    Main().files.CloseAll();
    Main().categories.LoadCategories();
    EXPECT_EQ(Shown(1).at(7), "     SALADS");
    EXPECT_EQ(List(1).Item(7).Tag, " 5 ");
    EXPECT_EQ(Main().store.TotalRecipes(), 32);
    EXPECT_TRUE(Main().files.IsOpen(filenumber::Recipes));
}

TEST_F(CategoryFile, LoadingAgainTakesTheNewSetOfPictures) {
    StartIt();
    Book.Numbers("ALL RECIPES WITH PICTURES") = " 9 ";
    Folder.Write(FileName, Book.CategoryFile());
    Main().categories.LoadCategories();
    EXPECT_TRUE(Main().pictures.HasPicture("9"));
    EXPECT_FALSE(Main().pictures.HasPicture("2"));
}

TEST_F(CategoryFile, LoadingMoreCategoriesThanRecipesFitAgainLeavesTheWindowIdle) {
    for (int i = 1; i < 60; ++i)
        Book.Numbers("FILLER " + std::to_string(i)) = " 3 ";
    StartIt();
    ASSERT_GT(Main().VList[0].Count(), Fit(2));
    ClickCategory("SOUPS");
    Main().categories.LoadCategories();
    EXPECT_EQ(Main().ui.lblFound.Caption(), "2 recipes found ");
    EXPECT_NE(Main().ui.window.Native()->cursor().shape(), Qt::WaitCursor);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{5, 6})) << "33 was deleted";
}

}  // namespace
}  // namespace larder::test
