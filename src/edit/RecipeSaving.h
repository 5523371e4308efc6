#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace larder {

class frmAddRecipe;
class frmMain;
class RichTextBox;

// The way of a text from the editor, or from the viewer that is open to typing, into the book.
class RecipeSaving {
  public:
    explicit RecipeSaving(frmMain& hub) : main(hub) {}

    // The Add or Update of the editor, behind what was typed in the viewer. A refusal or a failed
    // write leaves the window open with everything that was in it, and with what can be undone.
    void ibAdd_Click(frmAddRecipe& form);
    // Stores what was typed in the viewer, as the recipe whose text stands there. False when it
    // could not be written: the text is still in the viewer, and unsaved.
    bool SaveInPlaceEdit();
    // A save is under way; it lets events run.
    bool Busy() const { return busy_; }
    // The viewer is about to show a recipe although a save is under way.
    void NoteShown() { shown_ = true; }

  private:
    class Working;
    class ViewerLocked;
    enum class Outcome { Stored, Empty, Failed };
    Outcome Store(frmAddRecipe& form);
    Outcome AddNew(frmAddRecipe& form);
    Outcome Update(frmAddRecipe& form);
    bool IsDeleted(std::int32_t recipeNum);
    Outcome StoreText(RichTextBox& box, std::int32_t recipeNum);
    std::string WithoutLeading(const std::string& strRTF, std::size_t count);

    frmMain& main;
    bool busy_ = false;
    bool shown_ = false;  // a recipe, since the save began
};

}  // namespace larder
