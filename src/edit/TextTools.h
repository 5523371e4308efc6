#pragma once

#include <optional>
#include <string>

namespace larder {

class frmAddRecipe;
class frmMain;
class RichTextBox;

// The buttons and menus of the editor that work in its text: formats, alignment, clipboard. They
// act on the box that last had the focus.
class TextTools {
  public:
    TextTools(frmMain& hub, frmAddRecipe& form) : main(hub), form_(form) {}

    void Connect();
    // With nothing selected, the word under the caret becomes the selection; between two words the
    // selection stays empty.
    void SelectWord(RichTextBox& rtb);
    // Latches the buttons of the formats that the whole selection has. Cheap enough for every key.
    void UpdateToolsBar();

  private:
    // One of the formats that a selection has, has not, or has in part.
    using Get = std::optional<bool> (RichTextBox::*)() const;
    using Set = void (RichTextBox::*)(bool);

    void ConnectFormats();
    void ConnectAlignment();
    void ConnectClipboard();
    void Invert(Get get, Set set);
    void BeActive(RichTextBox& box, RichTextBox& other);
    void Send(const std::string& keys);

    frmMain& main;
    frmAddRecipe& form_;
};

}  // namespace larder
