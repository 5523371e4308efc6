#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lists/NumberSet.h"

namespace larder {

class frmMain;

// Which recipes have a photograph, and where the file is. The set is the category "ALL RECIPES
// WITH PICTURES", so that asking costs no access to any file; only a picture that is to be shown
// is looked for.
class PictureSet {
  public:
    explicit PictureSet(frmMain& hub) : main(hub) {}

    // The file found last by CheckForAPicture, in the program's own form; empty if none.
    std::string strPictureFileName;

    // Whether the number stands in the set.
    bool HasPicture(const std::string& strRecipeNum) const;
    // The same, but for a deleted recipe: a deletion that was cut short may have left its picture.
    bool ShowsPicture(std::int32_t RecipeNum) const;
    // The file of a recipe's picture, or of a picture by name; "...." is the current recipe. Empty
    // when there is none. Asks for the disc while the folder of the stock photos is missing.
    std::string CheckForAPicture(std::string strRecipeNum);

    // Deletes the recipe's pictures of every kind but the files to be kept. What cannot be deleted
    // is passed over; what was is gone from the disk.
    void DeleteFiles(std::int32_t RecipeNum, const std::vector<std::string>& kept);

    // Each change is on the disk when the routine returns.
    void AddToAllWithPicture(std::int32_t RecipeNum);
    void RemoveFromAllWithPicture(std::int32_t RecipeNum);

    // Copies the set from the category list that has just been loaded.
    void TakeFromCategories();
    // Takes the lines without a picture out of the window of the recipe list. The line behind one
    // that went is passed over.
    void QueryPicturesOnly();

  private:
    // The first of base + ".jpg", ".bmp", ".gif" that exists; empty if none does.
    std::string FirstFile(const std::string& base) const;
    // False when the user gave up looking for the disc.
    bool WaitForPhotoFolder();

    frmMain& main;
    NumberSet strAllWithPicture;
};

}  // namespace larder
