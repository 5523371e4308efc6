#pragma once

#include <cstdint>
#include <string>

namespace larder {

class Failure;
class Image;
class frmAddRecipe;
class frmMain;

// The picture that the recipe in the editor will have. A choice changes nothing on the disk until
// the recipe is saved.
class PictureAssignment {
  public:
    PictureAssignment(frmMain& hub, frmAddRecipe& form) : main(hub), form_(form) {}

    bool booPictureChanged = false;  // assigned or removed since the editor was filled

    void Connect();
    // No picture, as for a new recipe.
    void Reset();

    // The file that the picture will have when it is saved, in the program's own form; empty for no
    // picture. Setting it dresses the picture buttons and sets booPictureChanged.
    const std::string& NewPictureFileName() const { return strNewPictureFileName; }
    void SetNewPictureFileName(const std::string& file);
    // Shows a file in the frame; an empty name clears it. Failures as of Picture::FromFile leave
    // the frame as it was.
    void ShowPreview(const std::string& strFile);
    // Puts the preview into the frame's present place.
    void PlacePreview();

    // Brings the pictures on the disk, the set of recipes with a picture and the list in step with
    // the choice. What goes wrong with a file is told or passed over; nothing is deleted before its
    // successor is there. A new recipe has no picture: where its number has one, stock and own
    // recipes do not belong together, and it is that of another recipe. It stays as it is.
    void Store(std::int32_t recipeNum, bool isNew);

  private:
    void AssignPicture();
    bool AskAndTake();
    std::string FileOf(std::int32_t recipeNum, const std::string& ending) const;
    void RemovePicture();
    void FitIntoFrame(Image& image);
    bool CopyChosen();
    void TellNotCopied();
    void UpdateLine(std::int32_t recipeNum);
    void TellNotShown(const std::string& file, const Failure& failure);

    frmMain& main;
    frmAddRecipe& form_;
    std::string strNewPictureFileName;
    std::string strChosenFile;  // what the user picked; the dialog may be used for other things
};

}  // namespace larder
