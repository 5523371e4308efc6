#include "search/CategoryMaker.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/Failure.h"
#include "support/SearchScene.h"

namespace larder {
namespace {

constexpr const char* FixedLines =
    " 5 \r\n"
    "MY FAVORITES\r\n \r\n"
    "BUYING AND PREPARATION TIPS\r\n\r\n"
    "ALL RECIPES\r\n*\r\n";

class CategoryMakerTest : public testing::Test {
  protected:
    void SetUp() override {
        scene.Write({"One", "Two", "Three"}, {"My cod", "Perch"});
        scene.WriteIndex({{"bass", "2 3"}, {"cod", "1 2"}, {"sea", "3"}});
    }
    void Make() {
        MakeCategoriesFile(scene.Data.Files, scene.Data.Paths, scene.Store, scene.Finder,
                           scene.List);
    }
    std::string Made(const std::string& names) {
        scene.Data.Folder.Write("Data/Category Names.txt", names);
        Make();
        return scene.Data.Folder.Read("Data/Categories.ctg");
    }

    test::SearchScene scene;
};

TEST_F(CategoryMakerTest, TheCountAndThreeFixedCategoriesComeFirst) {
    EXPECT_EQ(Made(""), FixedLines);
}

TEST_F(CategoryMakerTest, ANameHoldsWhatASearchForItFinds) {
    EXPECT_EQ(Made("cod\r\nbass\r\n"),
              std::string(FixedLines) + "cod\r\n 1 2 4 \r\nbass\r\n 2 3 \r\n");
}

TEST_F(CategoryMakerTest, ANameStandsAsItIsWrittenThoughTheSearchCutsIt) {
    EXPECT_EQ(Made("Sea-Bass\r\n"), std::string(FixedLines) + "Sea-Bass\r\n 3 \r\n");
}

TEST_F(CategoryMakerTest, ANameWithoutAHitIsLeftOut) {
    EXPECT_EQ(Made("bass\r\nwhale\r\nsea\r\n"),
              std::string(FixedLines) + "bass\r\n 2 3 \r\nsea\r\n 3 \r\n");
}

TEST_F(CategoryMakerTest, ANameWithoutASearchableWordIsLeftOut) {
    EXPECT_EQ(Made("bass\r\nand the\r\n\r\n - \r\n"),
              std::string(FixedLines) + "bass\r\n 2 3 \r\n");
}

TEST_F(CategoryMakerTest, BothFilesAreClosedAfterwards) {
    Made("cod\r\n");
    EXPECT_EQ(scene.Data.Files.FreeNumber(), 3) << "the database has 1 and 2, and 21 and 22";
}

// Whatever step fails, the categories are as before and both numbers are free.
TEST_F(CategoryMakerTest, AFailureInTheMiddleLeavesTheOldCategoriesAndNoFileOpen) {
    scene.Data.Folder.Write("Data/Category Names.txt", "cod\r\nbass\r\n");
    scene.Data.Folder.Write("Data/Categories.ctg", "as before");
    const int freeBefore = scene.Data.Files.FreeNumber();
    for (const std::string kind : {"truncate", "write", "flush", "close", "rename"}) {
        int steps = kind == "write" ? 8 : 1;  // the lines of a name, behind the fixed ones
        if (kind == "truncate") scene.Data.Folder.Write("Data/Categories.ctg.new", "a killed one");
        scene.Data.Files.Watch([&](const NumberedFiles::Access& access) {
            const bool categories = access.Path.find("Categories.ctg") != std::string_view::npos;
            if (access.Kind != kind || !categories || --steps != 0) return;
            throw Failure(failure::DiskFull, "test");
        });
        EXPECT_EQ(Ignoring([&] { Make(); }), failure::DiskFull) << kind;
        scene.Data.Files.Watch(nullptr);
        EXPECT_EQ(scene.Data.Folder.Read("Data/Categories.ctg"), "as before") << kind;
        EXPECT_FALSE(scene.Data.Folder.Exists("Data/Categories.ctg.new")) << kind;
        EXPECT_EQ(scene.Data.Files.FreeNumber(), freeBefore) << kind;
    }
    Make();
    EXPECT_EQ(scene.Data.Folder.Read("Data/Categories.ctg"),
              std::string(FixedLines) + "cod\r\n 1 2 4 \r\nbass\r\n 2 3 \r\n");
}

TEST_F(CategoryMakerTest, NamesThatCannotBeReadToTheEndLeaveTheOldCategoriesToo) {
    scene.Data.Folder.Write("Data/Category Names.txt", "cod\r\nbass\r\n");
    scene.Data.Folder.Write("Data/Categories.ctg", "as before");
    const int freeBefore = scene.Data.Files.FreeNumber();
    scene.Data.Files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind != "read" || !access.Path.ends_with("Category Names.txt")) return;
        throw Failure(failure::DeviceError, "test");
    });
    EXPECT_EQ(Ignoring([&] { Make(); }), failure::DeviceError);
    scene.Data.Files.Watch(nullptr);
    EXPECT_EQ(scene.Data.Folder.Read("Data/Categories.ctg"), "as before");
    EXPECT_FALSE(scene.Data.Folder.Exists("Data/Categories.ctg.new"));
    EXPECT_EQ(scene.Data.Files.FreeNumber(), freeBefore);
}

TEST_F(CategoryMakerTest, MissingNamesAreAFailureThatLeavesTheCategories) {
    scene.Data.Folder.Write("Data/Categories.ctg", "as before");
    try {
        Make();
        FAIL() << "no failure";
    } catch (const Failure& f) {
        EXPECT_EQ(f.Number, failure::FileNotFound);
    }
    EXPECT_EQ(scene.Data.Folder.Read("Data/Categories.ctg"), "as before");
}

}  // namespace
}  // namespace larder
