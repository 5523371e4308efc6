#pragma once

#include <string>

namespace larder {

// Where every file of the cook-book lies, in the program's own paths (see Paths). There are two
// roots: the data folder on the hard disk, and the folder, maybe on a disc, that holds the text and
// the photos of the stock recipes. Both end with a backslash.
struct DataPaths {
    std::string strPath;
    std::string strPathCD;
    std::string strVideoPath;  // set by who looks for the video; empty when it is not on the disk

    std::string strCatDSourceFile;
    std::string strRecipesFile;
    std::string strRecipesIndexFile;
    std::string strRecipesTempFile;
    std::string strRecipesIndexTempFile;
    std::string strCustomRecipesFile;
    std::string strCustomRecipesIndexFile;
    std::string strCatDFile;
    std::string strCatDIndexFile;
    std::string strCategoriesFile;
    std::string strCategoryNamesFile;
    std::string strSearchYDBFileName;
    std::string strSearchINDFileName;
    std::string strPhotosPathCD;
    std::string strPhotosPath;

    // Sets the two roots, and every path that follows from them. Leaves strVideoPath alone.
    void Assign(const std::string& hardDiskRoot, const std::string& stockRoot);
};

}  // namespace larder
