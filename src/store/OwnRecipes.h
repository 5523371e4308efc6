#pragma once

#include <cstdint>
#include <string>

namespace larder {

class frmMain;

// The life of the user's own recipes, as the window sees it: the write to the database files, and
// what has to follow it in the lists, the favourites, the pictures and the counts. Stock recipes
// take the same ways in edit mode ("/E").
class OwnRecipes {
  public:
    explicit OwnRecipes(frmMain& hub) : main(hub) {}

    // Stores the recipe that stands in the editor as a new one, makes it a favourite and shows it.
    // False when it could not be written: nothing else is touched then.
    bool AddRecipe();
    // Opens the editor on a recipe.
    void EditRecipe(std::int32_t RecipeNum);
    // Replaces a record. False when it could not be written; the reason has been shown.
    bool UpdateRecipe(std::int32_t RecipeNum, const std::string& strRTF,
                      const std::string& strTitleTXT);
    // Deletes a recipe with its picture, asking first unless `Silent`. A stock recipe stays when
    // `OnlyCustom` is set outside edit mode.
    void DeleteRecipe(std::int32_t RecipeNum, bool OnlyCustom, bool Silent);

  private:
    frmMain& main;
};

}  // namespace larder
