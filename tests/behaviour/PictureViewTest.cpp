#include "browse/PictureView.h"

#include <QImage>
#include <QString>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

// Two recipes, of which the second has a photograph of 80 × 60 pixels.
class PictureViewTest : public MainWindowFixture {
  protected:
    PictureViewTest() {
        Book.AddStock("Cod");
        Book.AddStock("Salmon");
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 2 ";
        Book.Numbers("WHITE") = " 1 2 ";
        Folder.MakeFolder("Data/Food Photos");
        WritePhoto("2.bmp");
    }

    void WritePhoto(const std::string& name) {
        QImage photo(80, 60, QImage::Format_RGB32);
        photo.fill(Qt::blue);
        const std::string file = Folder.Native("Data/Food Photos/" + name);
        ASSERT_TRUE(photo.save(QString::fromStdString(file)));
    }

    std::string OnView() {
        const MainControls& ui = Main().ui;
        if (ui.frPic.Visible() && !ui.rtbSee.Visible()) return "picture";
        return ui.rtbSee.Visible() && !ui.frPic.Visible() ? "text" : "nothing";
    }
};

TEST_F(PictureViewTest, TheFirstClickShowsThePictureTheSecondTheTextTheThirdThePicture) {
    ASSERT_TRUE(Start());
    Main().categories.SimulateCategoryClick("WHITE");
    PressLine(2, 2);
    EXPECT_EQ(OnView(), "picture");
    EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Disabled);
    EXPECT_EQ(Main().ui.ibRecipeButton.ButtonState(), ImageButton::Up);
    PressLine(2, 2);
    EXPECT_EQ(OnView(), "text");
    EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Up);
    EXPECT_EQ(Main().ui.ibRecipeButton.ButtonState(), ImageButton::Disabled);
    PressLine(2, 2);
    EXPECT_EQ(OnView(), "picture");
}

TEST_F(PictureViewTest, ARecipeWithoutAPictureOpensOnItsText) {
    ASSERT_TRUE(Start());
    Main().categories.SimulateCategoryClick("WHITE");
    PressLine(2, 2);
    PressLine(2, 1);
    EXPECT_EQ(OnView(), "text");
}

TEST_F(PictureViewTest, ASmallPictureKeepsItsSizeAndStandsInTheMiddle) {
    ASSERT_TRUE(Start());
    Main().categories.SimulateCategoryClick("WHITE");
    PressLine(2, 2);
    const Rectangle frame = Main().ui.frPic.Place();
    const Rectangle box = Main().ui.imgWaterMark3.Place();
    EXPECT_FLOAT_EQ(frame.Width, 80 * TwipsPerPixel);
    EXPECT_FLOAT_EQ(frame.Height, 60 * TwipsPerPixel);
    EXPECT_NEAR(frame.Left - box.Left, box.Width - frame.Width - (frame.Left - box.Left), 1);
    EXPECT_NEAR(frame.Top - box.Top, box.Height - frame.Height - (frame.Top - box.Top), 1);
}

TEST_F(PictureViewTest, ARecipeWhosePictureFileHasGoneShowsItsText) {
    ASSERT_TRUE(Start());
    Main().categories.SimulateCategoryClick("WHITE");
    std::filesystem::remove(Folder.Native("Data/Food Photos/2.bmp"));
    PressLine(2, 2);
    EXPECT_EQ(OnView(), "text");
}

TEST_F(PictureViewTest, AfterAResizeTheSamePictureIsPlacedWithoutReadingItsFile) {
    ASSERT_TRUE(Start());
    Main().categories.SimulateCategoryClick("WHITE");
    PressLine(2, 2);
    std::filesystem::remove(Folder.Native("Data/Food Photos/2.bmp"));
    Main().layout.ResizeIt();
    EXPECT_EQ(OnView(), "picture");
    EXPECT_FALSE(Main().ui.imgPicture.Shown().IsEmpty());
}

TEST_F(PictureViewTest, AddingTheRecipeOnViewToTheFavoritesLeavesTheFocusWhereItWas) {
    ASSERT_TRUE(Start());
    Main().categories.SimulateCategoryClick("WHITE");
    ASSERT_TRUE(Main().ui.lvwX1.HasFocus());
    Main().favorites.AddToFavorites(1);
    EXPECT_TRUE(Main().ui.lvwX1.HasFocus());
}

}  // namespace
}  // namespace larder::test
