#pragma once

#include <functional>
#include <string>

#include "platform/NumberedFiles.h"
#include "store/DataPaths.h"
#include "store/RecipeStore.h"
#include "store/RecipeWriter.h"

namespace larder {

class Paths;
class RichText;

// The maintainers' operations that turn large RTF documents into the database files. They leave
// the program fit only for closing: files are closed, and what is on the screen does not match the
// new files.
class AuthoringTools {
  public:
    // All outlive the tools.
    AuthoringTools(NumberedFiles& files, const Paths& system, const DataPaths& paths,
                   RecipeStore& store, RecipeWriter& writer);

    // The signal at the end of a tool; may be empty.
    std::function<void()> OnBeep;

    // The document with the recipes: each begins with '#', an identifier up to the first blank,
    // blanks and tabs, and the title up to the line's end; the title is part of the body.
    std::string strRecipesSourceFile;

    // Cuts strRecipesSourceFile up and appends each recipe to the custom files; deletes the stock
    // files, and leaves an empty stock index. A document without '#' yields nothing. Failures: 53
    // and 75 for the document.
    void StoreRecipeisInFile();
    // Cuts the document of the descriptions up ('@', one character, the title up to the line's
    // end, the body) and stores them anew in files 3 and 4.
    void StoreCatDInFile();

    // Rebuilds the stock's index from its text, whose records all end with a line "\yyk"; what
    // stands behind the last of these lines gets no entry. Any failure reaches the caller.
    void MakeIndex();
    // Opens the files and counts the records anew, deleted ones included; builds nothing. Failure
    // 52 when an index cannot be opened.
    void ReMakeAll();
    // StoreCatDInFile with a signal at the end.
    void ReMakeAllCatD();

  private:
    RichText LoadDocument(const std::string& file) const;
    void Beep() const;
    void ReplaceByEmptyIndex(const std::string& text, const std::string& index, int textNumber,
                             int indexNumber);

    NumberedFiles& files_;
    const Paths& system_;
    const DataPaths& paths_;
    RecipeStore& store_;
    RecipeWriter& writer_;
};

}  // namespace larder
