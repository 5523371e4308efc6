#pragma once

#include <cstdint>
#include <string>

namespace larder {

class frmMain;

// Which recipes have a photograph. The set is the category "ALL RECIPES WITH PICTURES", so that
// asking costs no access to any file.
class PictureSet {
  public:
    explicit PictureSet(frmMain& hub) : main(hub) {}

    // Whether the number stands in the set.
    bool HasPicture(const std::string& strRecipeNum) const;
    // Copies the set from the category list that has just been loaded.
    void TakeFromCategories();

  private:
    frmMain& main;
    std::string strAllWithPicture;
};

}  // namespace larder
