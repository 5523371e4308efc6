#pragma once

#include <cstdint>
#include <string>

namespace larder {

class frmMain;

// Writing in recipes, as the window sees it: the editor window `frmAddRecipe`, made at its first
// use and prepared anew at each opening, and editing in place in the viewer.
class RecipeEditor {
  public:
    explicit RecipeEditor(frmMain& hub);
    ~RecipeEditor();

    // The editor for a new recipe, modeless in front of the main window. An editor that is open
    // comes to the front as it is.
    void ShowNew();
    // The editor on an existing recipe. A stock recipe outside edit mode opens nothing.
    void LoadRecipeToUpdate(std::int32_t RecipeNum);
    // What stands in the editor: the plain text of the title box, and the whole recipe.
    std::string Title() const;
    std::string RecipeRTF() const;
    // The hourglass (11) or the usual pointer (0) on the editor, if there is one.
    void SetMousePointer(int pointer);
    // The main window is closing: the editor goes without a question.
    void Unload();

    // The viewer is open to typing.
    bool InPlaceEdit() const { return booInPlaceEdit_; }
    void SetInPlaceEdit(bool open);
    // Opens the viewer to typing on the current recipe.
    void EditRecipe_InPlace();
    // Stores what was typed in the viewer.
    void SaveInPlaceEdit();

  private:
    frmMain& main;
    bool booInPlaceEdit_ = false;
};

}  // namespace larder
