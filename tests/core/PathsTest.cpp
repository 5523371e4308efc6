#include "platform/Paths.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/NumberedFiles.h"
#include "platform/Text.h"
#include "support/TempFolder.h"

namespace larder {
namespace {

using test::TempFolder;

class PathsTest : public ::testing::Test {
  protected:
    TempFolder folder;
    Paths paths;
    std::string root = paths.Alias(folder.Native());
};

TEST_F(PathsTest, AFolderThatTheCodePageSpellsIsNamedByItself) {
    EXPECT_EQ(paths.Alias("/home/kari/Data"), "\\home\\kari\\Data");
    EXPECT_EQ(paths.Alias("/home/kari/Data/"), "\\home\\kari\\Data");
    EXPECT_EQ(paths.Native("\\home\\kari\\Data\\Recipes.ydb"), "/home/kari/Data/Recipes.ydb");
}

TEST_F(PathsTest, TheRootOfTheSystemIsAnEmptyName) {
    EXPECT_EQ(paths.Alias("/"), "");
    EXPECT_EQ(paths.Native(paths.Alias("/") + "\\tmp"), "/tmp");
    EXPECT_EQ(paths.Native("\\"), "/");
}

TEST_F(PathsTest, ARelativeFolderCountsFromTheCurrentOne) {
    EXPECT_EQ(paths.Native(paths.Alias("some folder")),
              (std::filesystem::current_path() / "some folder").string());
}

TEST_F(PathsTest, AFolderOutsideTheCodePageGetsANameThatLeadsBackToIt) {
    folder.Write("魚と貝/Data/Recipes.ydb", "x");
    const std::string alias = paths.Alias(folder.Native("魚と貝"));
    EXPECT_EQ(alias.find('?'), 1u);
    EXPECT_NE(alias.back(), '\\');
    EXPECT_EQ(paths.Native(alias), folder.Native("魚と貝"));
    EXPECT_TRUE(paths.FileExists(alias + "\\Data\\Recipes.ydb"));
    EXPECT_TRUE(paths.FileExists(alias + "\\DATA\\recipes.YDB"));
    EXPECT_TRUE(paths.FolderExists(alias));
    EXPECT_EQ(paths.Alias(folder.Native("魚と貝")), alias) << "the same name the second time";
    EXPECT_NE(paths.Alias(folder.Native("貝")), alias);
}

TEST_F(PathsTest, ABackslashOrBrokenUtf8InAFolderNameIsNoObstacle) {
    for (const char* name : {"back\\slash", "broken\xE9", "question?"}) {
        folder.Write(std::string(name) + "/a.txt", "x");
        EXPECT_TRUE(paths.FileExists(paths.Alias(folder.Native(name)) + "\\a.txt")) << name;
    }
    EXPECT_EQ(paths.Native(paths.Alias("/?1/Data")), "/?1/Data") << "looks like a made-up name";
}

TEST_F(PathsTest, AccentedNamesAreFoundInUtf8) {
    folder.Write("Ærø/crème.jpg", "x");
    EXPECT_TRUE(paths.FileExists(root + "\\\xC6r\xF8\\cr\xE8me.jpg"));
    EXPECT_TRUE(paths.FileExists(root + "\\\xE6R\xD8\\CR\xC8ME.JPG"));
}

TEST_F(PathsTest, EachNameMatchesWithoutRegardToCase) {
    folder.Write("data/FOOD photos/12.JPG", "x");
    EXPECT_EQ(paths.Native(root + "\\Data\\Food Photos\\12.jpg"),
              folder.Native("data/FOOD photos/12.JPG"));
}

TEST_F(PathsTest, TheExactNameWinsOverOneThatDiffersByCase) {
    folder.Write("recipes.ydb", "lower");
    folder.Write("Recipes.ydb", "exact");
    folder.Write("RECIPES.YDB", "upper");
    EXPECT_EQ(paths.Native(root + "\\Recipes.ydb"), folder.Native("Recipes.ydb"));
    EXPECT_EQ(paths.Native(root + "\\rEcipes.ydb"), folder.Native("RECIPES.YDB"))
        << "of several the first in byte order";
}

TEST_F(PathsTest, ANameThatMatchesNothingStaysAsItIsInTheFolderThatMatches) {
    folder.MakeFolder("data");
    EXPECT_EQ(paths.Native(root + "\\Data\\New File.ydb"), folder.Native("data/New File.ydb"));
    EXPECT_EQ(paths.Native(root + "\\No\\Such"), folder.Native("No/Such"));
}

TEST_F(PathsTest, ARenamedFileIsFoundAtOnce) {
    folder.Write("a.txt", "x");
    ASSERT_TRUE(paths.FileExists(root + "\\A.txt"));
    folder.Rename("a.txt", "b.txt");
    EXPECT_FALSE(paths.FileExists(root + "\\A.txt"));
    EXPECT_TRUE(paths.FileExists(root + "\\B.txt"));
}

TEST_F(PathsTest, ADriveLetterLeadsToItsMountPointInEitherCase) {
    folder.Write("disc/data/recipes.ydb", "x");
    paths.MapDrive('E', folder.Native("disc"));
    EXPECT_EQ(paths.Native("E:\\Data\\Recipes.ydb"), folder.Native("disc/data/recipes.ydb"));
    EXPECT_TRUE(paths.FileExists("e:\\Data\\Recipes.ydb"));
    EXPECT_TRUE(paths.FolderExists("E:\\"));
    EXPECT_EQ(paths.Native("E:"), folder.Native("disc"));
}

TEST_F(PathsTest, ALetterWithoutADriveLeadsNowhere) {
    EXPECT_EQ(paths.Native("Q:\\Data\\Recipes.ydb"), "");
    EXPECT_FALSE(paths.FileExists("Q:\\Data\\Recipes.ydb"));
    EXPECT_FALSE(paths.FolderExists("Q:\\"));
    paths.MapDrive('E', folder.Native());
    ASSERT_TRUE(paths.FolderExists("E:\\"));
    paths.ForgetDrives();
    EXPECT_FALSE(paths.FolderExists("E:\\"));
}

TEST_F(PathsTest, FileExistsIsFalseForAFolderAndFolderExistsForAFile) {
    folder.Write("Data/a.txt", "x");
    EXPECT_TRUE(paths.FileExists(root + "\\Data\\a.txt"));
    EXPECT_FALSE(paths.FolderExists(root + "\\Data\\a.txt"));
    EXPECT_TRUE(paths.FolderExists(root + "\\Data"));
    EXPECT_TRUE(paths.FolderExists(root + "\\Data\\"));
    EXPECT_FALSE(paths.FileExists(root + "\\Data"));
    EXPECT_FALSE(paths.FileExists(root + "\\Data\\b.txt"));
    EXPECT_FALSE(paths.FileExists(""));
    EXPECT_FALSE(paths.FileExists(root + "\\Data\\a.txt" + std::string("\0b", 2)));
}

TEST_F(PathsTest, SlashesAndDoubledBackslashesDoNoHarm) {
    folder.Write("Data/a.txt", "x");
    EXPECT_TRUE(paths.FileExists(root + "\\\\Data/a.txt"));
}

}  // namespace
}  // namespace larder
