#include "app/MainControls.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QIcon>
#include <QTest>
#include <QWidget>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"

namespace larder::test {
namespace {

class MainControlsTest : public MainWindowFixture {
  protected:
    MainControlsTest() {
        Book.AddStock("Cod");
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 ";
        Book.Numbers("MY FAVORITES") = " 1 ";
    }
    MainControls& Ui() { return Main().ui; }
    Control& Named(const std::string& name) {
        for (Control* control : Ui().window.Controls()) {
            if (control->Name() == name) return *control;
        }
        ADD_FAILURE() << "no control " << name;
        return Ui().imgBackGroundMain;
    }
    std::vector<ImageButton*> Buttons() {
        return {&Ui().ibRecipeButton, &Ui().ibPhotoButton, &Ui().ibBack,   &Ui().ibNext,
                &Ui().ibReset,        &Ui().ibAdd,         &Ui().ibSearch, &Ui().ibHelp,
                &Ui().ibPrint,        &Ui().ibExit};
    }
};

TEST_F(MainControlsTest, TheToolTipsAreThoseOfTheDesign) {
    ASSERT_TRUE(Start());
    const std::map<std::string, std::string> tips = {
        {"ibReset", "Return To Favorites"},
        {"ibAdd", "Add/Remove Recipes"},
        {"ibSearch", "Find Recipes"},
        {"ibHelp", "Get Help"},
        {"ibExit", "Quit the Program"},
        {"ibELeft", "Previous "},
        {"imgAddToFavorites", "Click to add current recipe to Favorites"},
        {"lblJustWithPics", "Show only recipes with pictures."},
        {"imgSortByName", "Sort by name"},
        {"imgSortByNum", "Sort by number"},
    };
    for (const auto& [name, tip] : tips)
        EXPECT_EQ(Named(name).ToolTipText(), tip) << name;
    const MainControls untouched;
    EXPECT_EQ(untouched.imgPicture.ToolTipText(), "Click to see recipe");
}

TEST_F(MainControlsTest, EveryButtonHasAToolTipAPressedLookAndAnAccessibleName) {
    ASSERT_TRUE(Start());
    Main().screen.NormPhotoButton();
    Main().screen.NormRecipeButton();
    for (ImageButton* button : Buttons()) {
        EXPECT_NE(button->ToolTipText(), "") << button->Name();
        EXPECT_FALSE(QAccessible::queryAccessibleInterface(button->Native())
                         ->text(QAccessible::Name)
                         .isEmpty())
            << button->Name();
        button->OnClick = nullptr;
        const QImage normal = button->Native()->grab().toImage();
        QTest::mousePress(button->Native(), Qt::LeftButton);
        EXPECT_EQ(button->CurrentLook(), ImageButton::Look::Pressed) << button->Name();
        EXPECT_NE(button->Native()->grab().toImage(), normal) << button->Name();
        QTest::mouseRelease(button->Native(), Qt::LeftButton);
        EXPECT_EQ(button->CurrentLook(), ImageButton::Look::Normal) << button->Name();
    }
}

TEST_F(MainControlsTest, TheViewButtonsHaveADisabledLook) {
    ASSERT_TRUE(Start());
    for (ImageButton* button : {&Ui().ibRecipeButton, &Ui().ibPhotoButton}) {
        button->SetButtonState(ImageButton::Up);
        const QImage normal = button->Native()->grab().toImage();
        button->SetButtonState(ImageButton::Disabled);
        EXPECT_NE(button->Native()->grab().toImage(), normal) << button->Name();
    }
}

TEST_F(MainControlsTest, EveryButtonIsReachedByTab) {
    ASSERT_TRUE(Start());
    Focus(1);
    std::set<std::string> reached;
    while (reached.insert(FocusedName()).second)
        Key(Qt::Key_Tab);
    for (const char* picture : {"imgSortByName", "imgSortByNum", "imgAddToFavorites"}) {
        EXPECT_EQ(reached.count(picture), 1U) << picture;
    }
    for (const ImageButton* button : Buttons()) {
        EXPECT_EQ(reached.count(button->Name()), 1U) << button->Name();
    }
}

TEST_F(MainControlsTest, SpaceOnASortPictureSortsTheLines) {
    const int eel = Book.AddStock("Eel");
    const int bass = Book.AddStock("Bass");
    Book.Numbers("MY FAVORITES") = " 2 1 3 ";
    ASSERT_TRUE(Start());
    Ui().imgSortByName.SetFocus();
    Key(Qt::Key_Space);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{bass, 1, eel}));
    Ui().imgSortByNum.SetFocus();
    Key(Qt::Key_Space);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{1, eel, bass}));
}

TEST_F(MainControlsTest, TheListsAndTheTextHaveAccessibleNames) {
    ASSERT_TRUE(Start());
    for (Control* control :
         {static_cast<Control*>(&Ui().lvwX1), static_cast<Control*>(&Ui().lvwX2),
          static_cast<Control*>(&Ui().rtbSee), static_cast<Control*>(&Ui().chkFocusCatcher)}) {
        EXPECT_FALSE(QAccessible::queryAccessibleInterface(control->Native())
                         ->text(QAccessible::Name)
                         .isEmpty())
            << control->Name();
    }
}

TEST_F(MainControlsTest, AScreenReaderReadsTheTextOfALabel) {
    Book.Numbers("WHALES") = " ";
    ASSERT_TRUE(Start());
    const auto read = [](const Label& label) {
        return QAccessible::queryAccessibleInterface(label.Native())
            ->text(QAccessible::Name)
            .toStdString();
    };
    EXPECT_EQ(read(Ui().lblCategory), "MY FAVORITES");
    EXPECT_EQ(read(Ui().lblFound), "1 recipe found ");
    EXPECT_EQ(read(Ui().lblRecipeNum), "# 1");
    EXPECT_EQ(read(Ui().lblTotal), "1 recipes in the database") << "a bare number tells nothing";
    ASSERT_TRUE(Main().ownRecipes.StoreNewRecipe("Soup", "{\\rtf1 Soup\\par}"));
    EXPECT_EQ(read(Ui().lblTotal), "2 recipes in the database");
    ClickCategory("WHALES");
    EXPECT_EQ(read(Ui().lblCategory), "     WHALES");
    EXPECT_EQ(read(Ui().lblRecipeNum), "") << "no recipe is current";
    EXPECT_EQ(Ui().lblRecipeNum.ToolTipText(), "");
}

TEST_F(MainControlsTest, ThePicturesOfTheListsAreFoundByKeyAndByIndex) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(Ui().imlIcons.IndexOf("Camera"), 2);
    EXPECT_EQ(Ui().imlIcons.IndexOf("Camcoder"), 4);
    for (const char* key : {"ByName", "ByNamePressed", "ByNum", "ByNumPressed"}) {
        EXPECT_FALSE(Ui().ImageList1.Item(key).IsEmpty()) << key;
    }
    for (int i = 1; i <= Ui().imlIcons.Count(); ++i) {
        EXPECT_FALSE(Ui().imlIcons.Item(i).IsEmpty()) << i;
    }
}

TEST_F(MainControlsTest, ControlsThatAreUsedStandWithinTheWindowAndApartFromEachOther) {
    ASSERT_TRUE(Start());
    std::vector<Control*> used = {
        &Ui().lvwX1,         &Ui().lvwX2,        &Ui().rtbSee,      &Ui().imgAddToFavorites,
        &Ui().imgSortByName, &Ui().imgSortByNum, &Ui().lblCategory, &Ui().lblRecipeNum};
    for (ImageButton* button : Buttons())
        used.push_back(button);
    const float width = Ui().window.ClientWidth() + TwipsPerPixel;
    const float height = Ui().window.ClientHeight() + TwipsPerPixel;
    Main().viewer.ShowRecipe(1);
    for (std::size_t i = 0; i < used.size(); ++i) {
        const Rectangle& a = used[i]->Place();
        EXPECT_GE(a.Left, 0) << used[i]->Name();
        EXPECT_GE(a.Top, 0) << used[i]->Name();
        EXPECT_LE(a.Left + a.Width, width) << used[i]->Name();
        EXPECT_LE(a.Top + a.Height, height) << used[i]->Name();
        for (std::size_t j = i + 1; j < used.size(); ++j) {
            const Rectangle& b = used[j]->Place();
            const bool apart = a.Left + a.Width <= b.Left || b.Left + b.Width <= a.Left ||
                               a.Top + a.Height <= b.Top || b.Top + b.Height <= a.Top;
            EXPECT_TRUE(apart) << used[i]->Name() << " and " << used[j]->Name();
        }
    }
}

TEST_F(MainControlsTest, TheControlsOfAnArrayAreReachedByTheirIndex) {
    ASSERT_TRUE(Start());
    for (const int index : {1, 2})
        EXPECT_EQ(Ui().lvwX(index).Index(), index);
    for (const int index : {1, 2, 3}) {
        EXPECT_EQ(Ui().imgWaterMark(index).Index(), index);
        EXPECT_EQ(Ui().imgGarlic(index).Index(), index);
        EXPECT_EQ(Ui().lblScroll(index).Index(), index);
    }
}

TEST_F(MainControlsTest, TheArtShowsThroughTheTextOfARecipe) {
    ASSERT_TRUE(Start());
    Main().viewer.ShowRecipe(1);
    const auto& box = static_cast<const QAbstractScrollArea&>(*Ui().rtbSee.Native());
    EXPECT_FALSE(box.viewport()->autoFillBackground());
}

TEST_F(MainControlsTest, TheWindowGetsItsIconOnceItIsSeen) {
    ASSERT_TRUE(Start());
    EXPECT_TRUE(WaitUntil([&] { return !Ui().window.Native()->windowIcon().isNull(); }));
}

TEST_F(MainControlsTest, TheWorkBoxIsNeverOnTheScreen) {
    ASSERT_TRUE(Start());
    PressLine(2, 1);
    EXPECT_FALSE(Ui().rtbT.Visible());
}

TEST_F(MainControlsTest, TheCountOfAllRecipesStandsOnItsLabel) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(Ui().lblTotal.Caption(), "1");
    EXPECT_EQ(Ui().lblTotal.ToolTipText(), "1 recipes in the database");
}

TEST_F(MainControlsTest, WritingInRecipesIsOpenWhereTheMenuOffersIt) {
    ASSERT_TRUE(Start());
    for (const MenuItem* item : {&Ui().mnuPopUpEdit, &Ui().mnuPopUpDelete}) {
        EXPECT_TRUE(item->Enabled) << item->Name;
        EXPECT_TRUE(item->OnClick) << item->Name;
    }
}

}  // namespace
}  // namespace larder::test
