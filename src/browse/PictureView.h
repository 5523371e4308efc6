#pragma once

#include <cstdint>

#include "platform/Control.h"

namespace larder {

class frmMain;

// The picture of a recipe or a fish, in the image `imgPicture` within the clipping frame `frPic`.
class PictureView {
  public:
    explicit PictureView(frmMain& hub) : main(hub) {}

    // The current recipe as its picture, or as its text when it has none that can be shown.
    void ShowCurRecipePicture();
    // Loads the file named by strPictureFileName (unless `booSamePicture`) and places it. The
    // caller shows the frame, which stays hidden after a failure that the user was told. False when
    // there is no picture to show. TopOffset is not used.
    bool UpdatePicture(float TopOffset, bool booSamePicture);

  private:
    // False after a failure that was told. A file that is missing is no failure: there is no
    // picture then.
    bool LoadPicture();
    void PlacePicture(std::int32_t height, std::int32_t width);
    void FitInto(const Rectangle& box, std::int32_t height, std::int32_t width);
    void Cover(const Rectangle& box, std::int32_t height, std::int32_t width);

    frmMain& main;
};

}  // namespace larder
