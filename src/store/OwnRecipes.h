#pragma once

#include <cstdint>
#include <string>

#include "store/RecipeUpdater.h"
#include "store/RecipeWriter.h"

namespace larder {

class frmMain;

// The life of the user's own recipes, as the window sees it: the write to the database files, and
// what has to follow it in the lists, the favourites, the pictures and the counts. Stock recipes
// take the same ways in edit mode ("/E").
class OwnRecipes final : private UpdateSurroundings {
  public:
    explicit OwnRecipes(frmMain& hub);

    // Before the files are opened: finishes or takes back what a run before has left half done. A
    // failure is told; the program can go on, and nothing is written to the recipe files until it
    // succeeds.
    void SettleLastRun();

    // Deletes the copies of pictures that a run before was killed over. Nothing reads them; they
    // take up room beside the picture until the same recipe gets another one.
    void DeleteUnfinishedCopies();

    // Stores the recipe that stands in the editor as a new one, makes it a favourite and shows it.
    // Its title is the first line of the title box that has a character. False when there is none,
    // or when it could not be written (told): nothing else is touched then.
    bool AddRecipe();
    // AddRecipe for a recipe that stands nowhere yet.
    bool StoreNewRecipe(const std::string& strTitleTXT, const std::string& strRTF);
    // The number under which StoreNewRecipe has stored a recipe the last time, whatever came behind
    // the write; 0 when it stored none.
    std::int32_t NumberAdded = 0;
    // Opens the editor on a recipe.
    void EditRecipe(std::int32_t RecipeNum);
    // Replaces a record. The title ends with its first line. False when it could not be written;
    // the reason has been shown.
    bool UpdateRecipe(std::int32_t RecipeNum, const std::string& strRTF,
                      const std::string& strTitleTXT);
    // Deletes a recipe with its picture, asking first unless `Silent`. A stock recipe stays when
    // `OnlyCustom` is set outside edit mode.
    void DeleteRecipe(std::int32_t RecipeNum, bool OnlyCustom, bool Silent);

  private:
    bool EditMode() const override;
    void ShowError(const std::string& text) override;
    void TellMaintainer(const std::string& text) override;
    void SetHourglass(bool on) override;
    void ShowNewTitle(std::int32_t RecipeNum, const std::string& strTitleTXT) override;

    bool MayDelete(std::int32_t RecipeNum, bool OnlyCustom, bool Silent);

    frmMain& main;
    RecipeWriter writer_;
    RecipeUpdater updater_;
};

}  // namespace larder
