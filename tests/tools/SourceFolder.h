#pragma once

#include <string>
#include <string_view>

#include "support/TempFolder.h"

namespace larder::test {

// The maintainers' sources of a very small cook-book: three recipes, two descriptions, one
// picture, four category names of which three are used.
class SourceFolder {
  public:
    SourceFolder() {
        Folder.Write("source/Category Names.txt", "Cod\nSalmon\nWhale\nBaked\n");
        WriteRecipe("001-cod-cakes.txt",
                    "title: Cod Cakes\ncategories: Cod\nserves: 4\ntime: 30 minutes\n\n"
                    "Ingredients\n- 500 g cod\n\nMethod\n1. Fry the *cakes*.\n");
        WriteRecipe("002-baked-salmon.txt",
                    "title: Baked Salmon\ncategories: Salmon, Baked\n\nBake it.\n");
        WriteRecipe("003-baked-cod.txt", "title: Baked Cod\ncategories: Cod, Baked\n\nBake.\n");
        WriteDescription("01-cod.txt", "title: Cod\n\nA white fish.\n");
        WriteDescription("02-salmon.txt", "title: Salmon\n\nA red one.\n");
        WritePicture("002.svg");
    }

    void WriteRecipe(const std::string& name, std::string_view text) const {
        Folder.Write("source/recipes/" + name, text);
    }
    void WriteDescription(const std::string& name, std::string_view text) const {
        Folder.Write("source/descriptions/" + name, text);
    }
    void WritePicture(const std::string& name) const {
        Folder.Write("source/pictures/" + name,
                     "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 4 3\">"
                     "<rect width=\"4\" height=\"3\" fill=\"#284B71\"/></svg>");
    }
    std::string Source() const { return Folder.Native("source"); }
    std::string Out(const std::string& name = "out") const { return Folder.Native(name); }

    TempFolder Folder{TempFolder::InMemory()};
};

}  // namespace larder::test
