#include "search/CategoryMaker.h"

#include <string>

#include "platform/Failure.h"
#include "platform/WholeFile.h"

namespace larder {

void MakeCategoriesFile(NumberedFiles& files, const DataPaths& paths, const RecipeStore& store,
                        RecipeFinder& finder, VirtualList& list) {
    const int names = files.FreeNumber();
    files.Open(names, paths.strCategoryNamesFile, FileMode::Input);
    const int categories = files.FreeNumber();
    const auto write = [&] {
        files.WriteNumberLine(categories, store.TotalRecipes());
        for (const char* line :
             {"MY FAVORITES", " ", "BUYING AND PREPARATION TIPS", "", "ALL RECIPES", "*"}) {
            files.WriteLine(categories, line);
        }
        while (!files.AtEnd(names)) {
            const std::string name = files.ReadLine(names);
            std::string query = name;  // the finder changes its argument
            list.ClearAll();
            finder.FindRecipes(query);
            const std::string numbers = list.NumsToString();
            if (numbers.empty()) continue;
            files.WriteLine(categories, name);
            files.WriteLine(categories, numbers);
        }
    };
    try {
        WriteWholeFile(files, categories, paths.strCategoriesFile, write);
    } catch (const Failure&) {
        Ignoring([&] { files.Close(names); });
        throw;
    }
    files.Close(names);
}

}  // namespace larder
