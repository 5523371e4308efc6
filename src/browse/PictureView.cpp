#include "browse/PictureView.h"

#include <string>

#include "app/frmMain.h"
#include "layout/Util.h"

namespace larder {

namespace {

struct Size {
    std::int32_t Height;
    std::int32_t Width;
};

// Sizes of boxes are whole twips here, as those of pictures are: the fraction of a box that was
// scaled with the window would make a picture that fills it seem too small.
Size WholeSizeOf(const Rectangle& box) {
    return {static_cast<std::int32_t>(box.Height), static_cast<std::int32_t>(box.Width)};
}

}  // namespace

void PictureView::ShowCurRecipePicture() {
    main.screen.SetEncyclopediaMode(false);
    const std::int32_t current = main.viewer.CurrentRecipe();
    if (main.pictures.ShowsPicture(current)) {
        main.pictures.CheckForAPicture(std::to_string(current));
    } else {
        main.pictures.strPictureFileName.clear();
    }
    if (main.pictures.strPictureFileName.empty() || !UpdatePicture(0, false)) {
        main.viewer.ShowRecipe(main.viewer.CurrentRecipe());
        return;
    }
    main.ui.rtbSee.SetVisible(false);
    main.layout.HideRTB(main.ui.rtbSee);
    main.ui.frPic.SetVisible(true);
    main.screen.DimPhotoButton();
    main.screen.NormRecipeButton();
}

bool PictureView::UpdatePicture(float /*TopOffset*/, bool booSamePicture) {
    const bool shown = main.ui.frPic.Visible();
    main.ui.frPic.SetVisible(false);
    if (!booSamePicture && !LoadPicture()) return false;
    // The picture's own size counts at every placing, so that it grows back with the window.
    const Picture& picture = main.ui.imgPicture.Shown();
    const auto height = static_cast<std::int32_t>(picture.PixelHeight() * TwipsPerPixel);
    const auto width = static_cast<std::int32_t>(picture.PixelWidth() * TwipsPerPixel);
    const bool something = height > 0 && width > 0;
    if (something) PlacePicture(height, width);
    main.ui.frPic.SetVisible(shown);
    return something;
}

bool PictureView::LoadPicture() {
    Image& image = main.ui.imgPicture;
    for (;;) {
        try {
            const std::string& file = main.pictures.strPictureFileName;
            image.SetPicture(file.empty() ? Picture()
                                          : Picture::FromFile(main.objFSO.Native(file)));
            return true;
        } catch (const Failure& f) {
            if (f.Number == failure::FileNotFound) {
                main.pictures.strPictureFileName.clear();
                continue;
            }
            if (f.Number == failure::DriveNotReady) {
                if (main.AskOkCancel("Can't get the picture.\nPlease, make sure the CD is in "
                                     "the drive.")) {
                    continue;
                }
            } else {
                main.dialogs.MessageBox(std::to_string(f.Number) + "\n" + f.Description,
                                        Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation,
                                        "Tidewell Larder");
            }
            image.SetPicture(Picture());
            return false;
        }
    }
}

void PictureView::PlacePicture(std::int32_t height, std::int32_t width) {
    const std::string& category = main.ui.lblCategory.Caption();
    const bool encyclopedia = main.screen.EncyclopediaMode();
    if (main.ui.rtbSee.Text().empty() && encyclopedia) {
        FitInto(main.layout.Scaled(MainControls::Shape3), height, width);
    } else if ((category == "MY FAVORITES" || category == "ALL RECIPES") && encyclopedia) {
        Cover(main.layout.Scaled(MainControls::ShapeBrowser), height, width);
    } else {
        FitInto(main.ui.imgWaterMark3.Place(), height, width);
    }
}

void PictureView::FitInto(const Rectangle& box, std::int32_t height, std::int32_t width) {
    const Size room = WholeSizeOf(box);
    // A small picture keeps its size.
    if (height > room.Height || width > room.Width) {
        FitRectangle(room.Height, room.Width, height, width);
    }
    const auto h = static_cast<float>(height);
    const auto w = static_cast<float>(width);
    main.ui.imgPicture.Move({0, 0, w, h});
    main.ui.frPic.Move({box.Left + (box.Width - w) / 2, box.Top + (box.Height - h) / 2, w, h});
}

void PictureView::Cover(const Rectangle& box, std::int32_t height, std::int32_t width) {
    const Size room = WholeSizeOf(box);
    const auto frameHeight = static_cast<float>(room.Height);
    const auto frameWidth = static_cast<float>(room.Width);
    main.ui.frPic.Move({box.Left, box.Top, frameWidth, frameHeight});
    FitRectangle(room.Height, room.Width, height, width);
    const float r = static_cast<float>(height) / static_cast<float>(width);
    auto h = static_cast<float>(height);
    float w = 0;
    if (room.Height > height) {
        h = frameHeight;
        w = h / r;
    } else {
        w = frameWidth;
        h = r * w;
    }
    main.ui.imgPicture.Move({(frameWidth - w) / 2, (frameHeight - h) / 2, w, h});
}

}  // namespace larder
