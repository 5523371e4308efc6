#include "store/DataPaths.h"

#include <gtest/gtest.h>

namespace larder {
namespace {

TEST(DataPaths, EveryPathIsARootAndAFixedName) {
    DataPaths paths;
    paths.Assign("\\larder\\Data\\", "E:\\Data\\");
    const std::string disk = "\\larder\\Data\\";
    EXPECT_EQ(paths.strPath, disk);
    EXPECT_EQ(paths.strPathCD, "E:\\Data\\");
    EXPECT_EQ(paths.strCatDSourceFile, disk + "util\\FISH DIRECTORY.rtf");
    EXPECT_EQ(paths.strRecipesIndexFile, disk + "Recipes Index.ind");
    EXPECT_EQ(paths.strRecipesTempFile, disk + "Recipes Temp.ydb");
    EXPECT_EQ(paths.strRecipesIndexTempFile, disk + "Recipes Index Temp.ind");
    EXPECT_EQ(paths.strCustomRecipesFile, disk + "Custom Recipes.ydb");
    EXPECT_EQ(paths.strCustomRecipesIndexFile, disk + "Custom Recipes Index.ind");
    EXPECT_EQ(paths.strCatDFile, disk + "CategyD.ydb");
    EXPECT_EQ(paths.strCatDIndexFile, disk + "CategyD Index.ind");
    EXPECT_EQ(paths.strCategoriesFile, disk + "Categories.ctg");
    EXPECT_EQ(paths.strCategoryNamesFile, disk + "Category Names.txt");
    EXPECT_EQ(paths.strSearchYDBFileName, disk + "Search.ydb");
    EXPECT_EQ(paths.strSearchINDFileName, disk + "Search.ind");
    EXPECT_EQ(paths.strPhotosPath, disk + "Food Photos\\");
}

TEST(DataPaths, StockTextAndStockPhotosAloneComeFromTheDisc) {
    DataPaths paths;
    paths.Assign("\\larder\\Data\\", "E:\\Data\\");
    EXPECT_EQ(paths.strRecipesFile, "E:\\Data\\Recipes.ydb");
    EXPECT_EQ(paths.strPhotosPathCD, "E:\\Data\\Food Photos\\");
}

TEST(DataPaths, TheVideoPathIsLeftToWhoLooksForTheVideo) {
    DataPaths paths;
    EXPECT_EQ(paths.strVideoPath, "");
    paths.strVideoPath = "\\larder\\Data\\";
    paths.Assign("\\a\\", "\\b\\");
    EXPECT_EQ(paths.strVideoPath, "\\larder\\Data\\");
}

}  // namespace
}  // namespace larder
