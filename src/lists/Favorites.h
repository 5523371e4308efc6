#pragma once

#include <cstdint>

namespace larder {

class frmMain;
struct VirtualListItem;

// The user's own category, "MY FAVORITES": a number string in the order in which recipes were
// added. Every change is on the disk when the routine returns.
class Favorites {
  public:
    explicit Favorites(frmMain& hub) : main(hub) {}

    bool IsInFavorites(std::int32_t RecipeNum);
    // Adding a recipe twice leaves one entry. The list on screen stays as it is.
    void AddToFavorites(std::int32_t RecipeNum);
    // Takes it out of the set, and its line from the screen when the favourites are on view.
    void RemoveFromFavorites(std::int32_t RecipeNum);

  private:
    // The category's entry; failure 35601 when there is none.
    VirtualListItem& Entry();

    frmMain& main;
};

}  // namespace larder
