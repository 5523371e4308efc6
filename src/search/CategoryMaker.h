#pragma once

#include "lists/VirtualList.h"
#include "platform/NumberedFiles.h"
#include "search/RecipeFinder.h"
#include "store/DataPaths.h"
#include "store/RecipeStore.h"

namespace larder {

// Builds "Categories.ctg" from "Category Names.txt": a category is in origin a word search for its
// name, and holds the numbers that the search finds. `list` is the list that the finder fills. A
// name without a hit is left out. The numbers of the files are free ones, and free again
// afterwards. Failures of the files reach the caller, and an old file is whole then.
void MakeCategoriesFile(NumberedFiles& files, const DataPaths& paths, const RecipeStore& store,
                        RecipeFinder& finder, VirtualList& list);

}  // namespace larder
