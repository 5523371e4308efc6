#pragma once

#include <string>

#include "store/DataPaths.h"
#include "store/FileNumbers.h"

namespace larder {

// A recipe text and its index: the stock's, the user's, or the temporary ones of a rewrite.
struct RecipePair {
    int Text;
    int Index;
    std::string TextPath;
    std::string IndexPath;
};

inline RecipePair StockPair(const DataPaths& paths) {
    return {filenumber::Recipes, filenumber::RecipesIndex, paths.strRecipesFile,
            paths.strRecipesIndexFile};
}

inline RecipePair CustomPair(const DataPaths& paths) {
    return {filenumber::CustomRecipes, filenumber::CustomRecipesIndex, paths.strCustomRecipesFile,
            paths.strCustomRecipesIndexFile};
}

inline RecipePair TemporaryPair(const DataPaths& paths) {
    return {filenumber::RecipesTemp, filenumber::RecipesIndexTemp, paths.strRecipesTempFile,
            paths.strRecipesIndexTempFile};
}

}  // namespace larder
