#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "edit/RecipeSaving.h"
#include "store/RecipeStore.h"

namespace larder {

class frmMain;
class frmAddRecipe;

// Writing in recipes, as the window sees it: the editor window `frmAddRecipe`, made at its first
// use and prepared anew at each opening, and editing in place in the viewer.
class RecipeEditor {
  public:
    explicit RecipeEditor(frmMain& hub);
    ~RecipeEditor();

    // The editor for a new recipe, modeless in front of the main window. An editor that is open
    // comes to the front as it is.
    void ShowNew();
    // The editor on an existing recipe. A stock recipe outside edit mode opens nothing, nor does a
    // number without a recipe; a recipe that cannot be read is told. Work in an open editor is
    // asked for before it goes.
    void LoadRecipeToUpdate(std::int32_t RecipeNum);
    // What stands in the editor: the title, and the whole recipe as it would be stored.
    std::string Title() const;
    std::string RecipeRTF() const;
    // The hourglass (11) or the usual pointer (0) on the editor, if there is one.
    void SetMousePointer(int pointer);
    // The main window is closing, and MayClose has been asked: the editor goes.
    void Unload();
    // True when nothing unsaved is in the editor, or the user lets it go.
    bool MayDropWork();
    // Whether a text that was just read, and the look at its title, are what the book holds: a text
    // that could not be read must not be opened to typing.
    static bool IsReadable(TitleIs title, const std::string& strRTF);

    // The Add or Update of the editor, by its button or its menu.
    void ClickAdd();
    // A save is under way.
    bool Busy() const { return saving_.Busy(); }
    void NoteShown() { saving_.NoteShown(); }
    // The window, made at the first call.
    frmAddRecipe& Form();

    // The viewer is open to typing.
    bool InPlaceEdit() const { return booInPlaceEdit_; }
    void SetInPlaceEdit(bool open);
    // Opens the viewer to typing on the current recipe.
    void EditRecipe_InPlace();
    // Stores what was typed in the viewer, if anything was. False when it could not be written: it
    // is still there, and nothing else may be put into the viewer.
    bool SaveInPlaceEdit();

  private:
    bool MayClose();

    frmMain& main;
    RecipeSaving saving_;
    std::unique_ptr<frmAddRecipe> form_;
    bool booInPlaceEdit_ = false;
};

}  // namespace larder
