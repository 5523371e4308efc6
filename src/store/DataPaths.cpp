#include "store/DataPaths.h"

namespace larder {

void DataPaths::Assign(const std::string& hardDiskRoot, const std::string& stockRoot) {
    strPath = hardDiskRoot;
    strPathCD = stockRoot;
    strCatDSourceFile = strPath + "util\\FISH DIRECTORY.rtf";
    strRecipesFile = strPathCD + "Recipes.ydb";
    strRecipesIndexFile = strPath + "Recipes Index.ind";
    strRecipesTempFile = strPath + "Recipes Temp.ydb";
    strRecipesIndexTempFile = strPath + "Recipes Index Temp.ind";
    strCustomRecipesFile = strPath + "Custom Recipes.ydb";
    strCustomRecipesIndexFile = strPath + "Custom Recipes Index.ind";
    strCatDFile = strPath + "CategyD.ydb";
    strCatDIndexFile = strPath + "CategyD Index.ind";
    strCategoriesFile = strPath + "Categories.ctg";
    strCategoryNamesFile = strPath + "Category Names.txt";
    strSearchYDBFileName = strPath + "Search.ydb";
    strSearchINDFileName = strPath + "Search.ind";
    strPhotosPathCD = strPathCD + "Food Photos\\";
    strPhotosPath = strPath + "Food Photos\\";
}

}  // namespace larder
