#include "browse/PictureView.h"

#include <QImage>
#include <QPainter>
#include <QString>
#include <QWidget>
#include <cmath>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "layout/Util.h"

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
    EXPECT_EQ(Main().ui.ibPhotoButton.ButtonState(), ImageButton::Disabled);
    EXPECT_EQ(Main().ui.ibRecipeButton.ButtonState(), ImageButton::Up);
    EXPECT_GT(Main().ui.rtbSee.Left(), Main().ui.window.WorkArea().Width) << "out of the way";
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

TEST_F(PictureViewTest, ARecipeThatIsNotInTheSetShowsItsTextThoughThereIsAFile) {
    ASSERT_TRUE(Start());
    WritePhoto("1.bmp");
    Main().categories.SimulateCategoryClick("WHITE");
    PressLine(2, 2);
    PressLine(2, 1);
    EXPECT_EQ(OnView(), "text");
    EXPECT_EQ(Main().pictures.strPictureFileName, "");
}

TEST_F(PictureViewTest, ARecipeEndsTheDescriptionsWhetherItHasAPictureOrNot) {
    ASSERT_TRUE(Start());
    for (const std::int32_t recipe : {2, 1}) {
        Main().viewer.SetCurrentRecipe(recipe);
        Main().screen.SetEncyclopediaMode(true);
        Main().pictureView.ShowCurRecipePicture();
        EXPECT_FALSE(Main().screen.EncyclopediaMode()) << recipe;
    }
}

TEST_F(PictureViewTest, TheDiscOfThePicturesIsAskedForAndItsTextShownWhenItIsGivenUp) {
    ASSERT_TRUE(Start());
    Main().categories.SimulateCategoryClick("WHITE");
    Folder.Rename("Data/Food Photos", "Photos");
    Boxes.Then(Dialogs::Answer::Ok);
    Boxes.Then(Dialogs::Answer::Cancel);
    PressLine(2, 2);
    EXPECT_EQ(Boxes.Shown.size(), 2U);
    EXPECT_EQ(OnView(), "text");
    Boxes.Then(Dialogs::Answer::Ok, [this] { Folder.Rename("Photos", "Data/Food Photos"); });
    PressLine(2, 2);
    EXPECT_EQ(OnView(), "picture");
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

// The three cases of placing. Figures are pixels; an error of one comes from rounding.

class PicturePlacing : public PictureViewTest {
  protected:
    void SetUp() override {
        ASSERT_TRUE(Start());
        Resize(1024, 720);
    }
    void Resize(int width, int height) {
        MainControls& ui = Main().ui;
        ui.window.SetWindowState(Window::Normal);
        ui.window.SetClientSize(static_cast<float>(width) * TwipsPerPixel,
                                static_cast<float>(height) * TwipsPerPixel);
        ASSERT_TRUE(WaitUntil([&] {
            return ui.window.Native()->size() == QSize(width, height) &&
                   ui.imgBackGroundMain.Width() == static_cast<float>(width) * TwipsPerPixel;
        }));
    }
    // A picture with a red left, a green middle and a blue right, or so from top to bottom, the
    // middle being `middle` of the whole. Loaded and placed.
    void Load(int width, int height, float middle = 0.5F) {
        QImage photo(width, height, QImage::Format_RGB32);
        photo.fill(Qt::green);
        const bool wide = width > height;
        const int edge =
            static_cast<int>(static_cast<float>(wide ? width : height) * (1 - middle) / 2);
        QPainter painter(&photo);
        painter.fillRect(0, 0, wide ? edge : width, wide ? height : edge, Qt::red);
        painter.fillRect(wide ? width - edge : 0, wide ? 0 : height - edge, wide ? edge : width,
                         wide ? height : edge, Qt::blue);
        painter.end();
        const std::string file = Folder.Native("Data/Food Photos/3.png");
        ASSERT_TRUE(photo.save(QString::fromStdString(file)));
        Main().pictures.strPictureFileName = Main().objFSO.Alias(file);
        EXPECT_TRUE(Main().pictureView.UpdatePicture(0, false));
        Main().ui.frPic.SetVisible(true);
    }
    void AsDescription() {
        Main().ui.rtbSee.SetText("");
        Main().screen.SetEncyclopediaMode(true);
    }
    void AsPageOf(const std::string& category) {
        Main().ui.rtbSee.SetText("A text.");
        Main().ui.lblCategory.SetCaption(category);
        Main().screen.SetEncyclopediaMode(true);
    }
    void AsRecipe() { Main().screen.SetEncyclopediaMode(false); }

    static Rectangle Pixels(const Rectangle& twips) {
        return {twips.Left / TwipsPerPixel, twips.Top / TwipsPerPixel, twips.Width / TwipsPerPixel,
                twips.Height / TwipsPerPixel};
    }
    Rectangle Frame() { return Pixels(Main().ui.frPic.Place()); }
    Rectangle InFrame() { return Pixels(Main().ui.imgPicture.Place()); }
    static void ExpectPlace(const Rectangle& place, float left, float top, float width,
                            float height) {
        EXPECT_NEAR(place.Left, left, 1);
        EXPECT_NEAR(place.Top, top, 1);
        EXPECT_NEAR(place.Width, width, 1);
        EXPECT_NEAR(place.Height, height, 1);
    }
    // The frame hugs the picture.
    void ExpectWholePicture(float left, float top, float width, float height) {
        ExpectPlace(Frame(), left, top, width, height);
        ExpectPlace(InFrame(), 0, 0, width, height);
    }
    QColor ColorAt(int x, int y) { return Widget("frPic")->grab().toImage().pixelColor(x, y); }
};

// The box of a description is 402 × 536 at 582, 74; that of a recipe 408 × 546 at 578, 68; that of
// a page 430 × 554 at 574, 64.

TEST_F(PicturePlacing, AWidePictureOfADescriptionIsAsWideAsItsBox) {
    AsDescription();
    Load(1712, 856);
    ExpectWholePicture(582, 74 + (536 - 201) / 2, 402, 201);
}

TEST_F(PicturePlacing, ATallPictureOfADescriptionIsAsHighAsItsBox) {
    AsDescription();
    Load(400, 1072);
    ExpectWholePicture(582 + (402 - 200) / 2, 74, 200, 536);
}

TEST_F(PicturePlacing, ASmallPictureOfADescriptionKeepsItsSize) {
    AsDescription();
    Load(100, 50);
    ExpectWholePicture(582 + (402 - 100) / 2, 74 + (536 - 50) / 2, 100, 50);
}

TEST_F(PicturePlacing, APictureThatJustFitsKeepsItsSize) {
    AsDescription();
    Load(402, 536);
    ExpectWholePicture(582, 74, 402, 536);
    AsRecipe();
    Load(408, 20);
    ExpectWholePicture(578, 68 + (546 - 20) / 2, 408, 20);
}

TEST_F(PicturePlacing, WithoutATextThePageOfACategoryIsPlacedAsADescription) {
    AsPageOf("MY FAVORITES");
    AsDescription();
    Load(100, 50);
    ExpectWholePicture(582 + (402 - 100) / 2, 74 + (536 - 50) / 2, 100, 50);
}

TEST_F(PicturePlacing, AWidePictureOfAPageFillsItsHeightAndIsCutAlikeOnBothSides) {
    for (const char* category : {"MY FAVORITES", "ALL RECIPES"}) {
        AsPageOf(category);
        Load(2216, 1108);
        ExpectPlace(Frame(), 574, 64, 430, 554);
        ExpectPlace(InFrame(), (430 - 1108) / 2, 0, 1108, 554);
        // The middle half is 554 wide: nothing else is seen.
        for (const int x : {0, 215, 429}) {
            EXPECT_EQ(ColorAt(x, 0), QColor(Qt::green)) << x;
            EXPECT_EQ(ColorAt(x, 553), QColor(Qt::green)) << x;
        }
    }
}

TEST_F(PicturePlacing, ATallPictureOfAPageFillsItsWidthAndIsCutAlikeAboveAndBelow) {
    AsPageOf("ALL RECIPES");
    Load(860, 2580);
    ExpectPlace(Frame(), 574, 64, 430, 554);
    ExpectPlace(InFrame(), 0, (554 - 1290) / 2, 430, 1290);
    for (const int y : {0, 277, 553})
        EXPECT_EQ(ColorAt(215, y), QColor(Qt::green)) << y;
}

TEST_F(PicturePlacing, APictureCoversThePageAtWhateverHeightOfTheWindow) {
    AsPageOf("ALL RECIPES");
    int fractions = 0;
    for (const QSize size : {QSize(860, 2580), QSize(2216, 1108), QSize(43, 129)}) {
        for (int height = 600; height < 720; height += 17) {
            Resize(1024 + height % 7, height);
            Load(size.width(), size.height());
            const Rectangle box = Main().layout.Scaled(MainControls::ShapeBrowser);
            if (box.Height != std::floor(box.Height)) ++fractions;
            const Rectangle frame = Main().ui.frPic.Place();
            const Rectangle picture = Main().ui.imgPicture.Place();
            EXPECT_NEAR(frame.Width, box.Width, 1);
            EXPECT_NEAR(frame.Height, box.Height, 1);
            EXPECT_LE(picture.Left, 0) << height;
            EXPECT_LE(picture.Top, 0) << height;
            EXPECT_GE(picture.Left + picture.Width, frame.Width) << height;
            EXPECT_GE(picture.Top + picture.Height, frame.Height) << height;
        }
    }
    EXPECT_GT(fractions, 0) << "or this would show nothing";
}

TEST_F(PicturePlacing, ASmallPictureOfAPageIsEnlarged) {
    AsPageOf("ALL RECIPES");
    Load(60, 20, 0.1F);
    ExpectPlace(Frame(), 574, 64, 430, 554);
    ExpectPlace(InFrame(), (430 - 1662) / 2, 0, 1662, 554);
}

TEST_F(PicturePlacing, APictureOfThePagesShapeFillsItExactly) {
    AsPageOf("ALL RECIPES");
    Load(215, 277);
    ExpectPlace(InFrame(), 0, 0, 430, 554);
}

TEST_F(PicturePlacing, AStripThatCoversAPageIsPaintedWithoutRenderingWhatIsNotSeen) {
    AsPageOf("ALL RECIPES");
    Load(10000, 2, 0.5F);
    ExpectPlace(Frame(), 574, 64, 430, 554);
    EXPECT_GT(InFrame().Width, 1'000'000);
    for (const int x : {0, 429})
        EXPECT_EQ(ColorAt(x, 277), QColor(Qt::green)) << x;
}

TEST_F(PicturePlacing, APictureOfAnyOtherPageIsPlacedAsThatOfARecipe) {
    AsPageOf("SOUPS");
    Load(816, 408);
    ExpectWholePicture(578, 68 + (546 - 204) / 2, 408, 204);
}

TEST_F(PicturePlacing, ARecipeAmongTheFavouritesIsPlacedAsAnyRecipe) {
    for (const char* category : {"MY FAVORITES", "ALL RECIPES"}) {
        AsPageOf(category);
        AsRecipe();
        Load(816, 408);
        ExpectWholePicture(578, 68 + (546 - 204) / 2, 408, 204);
        Load(440, 1092);
        ExpectWholePicture(578 + (408 - 220) / 2, 68, 220, 546);
    }
}

TEST_F(PicturePlacing, AfterTheWindowWasSmallThePictureGrowsBack) {
    AsRecipe();
    Load(400, 300);
    const Rectangle before = Frame();
    Resize(512, 360);
    ExpectWholePicture(289, 34 + (273 - 153) / 2, 204, 153);
    Resize(1024, 720);
    ExpectPlace(Frame(), before.Left, before.Top, 400, 300);
}

TEST_F(PicturePlacing, ASmallPictureStaysSmallInALargeWindow) {
    AsRecipe();
    Load(100, 50);
    Resize(2048, 1440);
    ExpectWholePicture(1156 + (816 - 100) / 2, 136 + (1092 - 50) / 2, 100, 50);
}

TEST_F(PicturePlacing, ThePlacingKeepsTheFrameShownOrHidden) {
    AsRecipe();
    Load(100, 50);
    Main().pictureView.UpdatePicture(0, true);
    EXPECT_TRUE(Main().ui.frPic.Visible());
    Main().ui.frPic.SetVisible(false);
    Main().pictureView.UpdatePicture(0, true);
    EXPECT_FALSE(Main().ui.frPic.Visible());
}

TEST_F(PicturePlacing, WithoutAPictureNothingIsPlacedAndNothingSaid) {
    const Rectangle before = Frame();
    EXPECT_FALSE(Main().pictureView.UpdatePicture(0, true));
    EXPECT_FALSE(Main().pictureView.UpdatePicture(0, false));
    ExpectPlace(Frame(), before.Left, before.Top, before.Width, before.Height);
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST(FitRectangle, KeepsTheRatioAndFillsOneSide) {
    std::int32_t height = 3000;
    std::int32_t width = 1000;
    FitRectangle(600, 400, height, width);
    EXPECT_EQ(height, 600);
    EXPECT_EQ(width, 200);
    height = 10;
    width = 40;
    FitRectangle(600, 400, height, width);
    EXPECT_EQ(height, 100);
    EXPECT_EQ(width, 400);
}

TEST(FitRectangle, OfNoSizeStaysAndOfAHugeOneNothingIsLost) {
    std::int32_t height = 0;
    std::int32_t width = 40;
    FitRectangle(600, 400, height, width);
    EXPECT_EQ(height, 0);
    EXPECT_EQ(width, 40);
    height = 2'000'000'000;
    width = 2'000'000'000;
    FitRectangle(100'000, 200'000, height, width);
    EXPECT_EQ(height, 100'000);
    EXPECT_EQ(width, 100'000);
    height = 1;
    width = 100'000;
    FitRectangle(600, 400, height, width);
    EXPECT_EQ(height, 1) << "a strip does not vanish";
    EXPECT_EQ(width, 400);
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
