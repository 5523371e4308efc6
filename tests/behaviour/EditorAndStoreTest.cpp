// The editor and the store together: what the user writes, and what stands in the book then.

#include "behaviour/support/EditorBook.h"
#include "edit/frmAddRecipe.h"

namespace larder {
namespace {

using test::EditorBook;

class AWrittenRecipe : public EditorBook {
  protected:
    std::string TitleOf(int number) { return Main().store.GetRecipeTitle(number); }
    std::string TextOf(int number) {
        Main().ui.rtbT.SetTextRTF(Main().store.GetRecipeRTF(number));
        return Main().ui.rtbT.Text();
    }
    void AddNew(const std::string& title, const std::string& text) {
        OpenNew();
        TypeAnew(Editor().rtbTitle, title);
        TypeAnew(Editor().rtbRecipe, text);
        ClickOn(Editor().ibAdd);
    }
};

TEST_F(AWrittenRecipe, IsStoredUnderItsTitleAndShownAmongTheFavourites) {
    AddNew("Grilled Ling", "Grill it.");
    EXPECT_FALSE(EditorShown());
    ASSERT_EQ(Main().store.TotalNumRecords, 7);
    EXPECT_EQ(TitleOf(7), "Grilled Ling");
    EXPECT_EQ(TextOf(7), "Grilled Ling\r\n\r\nGrill it.");
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 7);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{4, 5, 7}));
    EXPECT_EQ(Main().ui.window.Native()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(AWrittenRecipe, WithTheTemplatesTitleIsStoredUnderThat) {
    OpenNew();
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(TitleOf(7), "TYPE THE TITLE HERE");
    EXPECT_EQ(TextOf(7).substr(0, 35), "TYPE THE TITLE HERE\r\n\r\nCOOKING TIME");
}

TEST_F(AWrittenRecipe, KeepsTheFormatOfItsTitleInFrontOfItsText) {
    OpenNew();
    ClickOn(Editor().ibAdd);
    OpenOn(7);
    Editor().rtbRecipe.SetSelStart(0);
    Editor().rtbRecipe.SetSelLength(19);
    EXPECT_EQ(Editor().rtbRecipe.SelBold(), true);
    EXPECT_EQ(Editor().rtbRecipe.SelUnderline(), true);
    EXPECT_EQ(Editor().rtbRecipe.SelColor(), 293286);
}

TEST_F(AWrittenRecipe, KeepsBoldAndCentredText) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Formats");
    TypeAnew(Editor().rtbRecipe, "plain");
    Press(Qt::Key_Return);
    Type("loud");
    ClickOn(Editor().ibBold);
    ClickOn(Editor().ibCenter);
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Main().store.TotalNumRecords, 7);
    OpenOn(7);
    Editor().rtbRecipe.Find("loud", 0);
    EXPECT_EQ(Editor().rtbRecipe.SelBold(), true);
    EXPECT_EQ(Editor().rtbRecipe.SelAlignment(), RichTextBox::Alignment::Center);
    Editor().rtbRecipe.Find("plain", 0);
    EXPECT_EQ(Editor().rtbRecipe.SelBold(), false);
    EXPECT_EQ(Editor().rtbRecipe.SelAlignment(), RichTextBox::Alignment::Left);
}

TEST_F(AWrittenRecipe, TakesTheFirstLineOfTheTitleBoxAsItsTitle) {
    OpenNew();
    Editor().rtbTitle.SetText("\r\nGrilled Ling\r\nand more");
    Editor().rtbRecipe.SetText("Grill it.");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(TitleOf(7), "Grilled Ling");
    EXPECT_EQ(TextOf(7), "Grilled Ling\r\n\r\nGrill it.");
}

TEST_F(AWrittenRecipe, WithCharactersOutsideTheCodePageKeepsThemInItsText) {
    OpenNew();
    Editor().rtbTitle.SetTextRTF("{\\rtf1\\ansi\\uc1 Fish \\u39770? pie}");
    Editor().rtbRecipe.SetText("Bake.");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(TitleOf(7), "Fish ? pie");
    EXPECT_NE(Main().store.GetRecipeRTF(7).find("\\u"), std::string::npos);
}

TEST_F(AWrittenRecipe, GetsThePictureThatWasChosenUnderItsNewNumber) {
    const std::string path = MakePicture("lunch.jpg");
    OpenNew();
    Boxes.ThenFile(path);
    ClickOn(Editor().ibAssignPicture);
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(Folder.Read(Photo("7.jpg")), Folder.Read("lunch.jpg"));
    EXPECT_TRUE(Main().pictures.HasPicture("7"));
    EXPECT_TRUE(Main().ui.frPic.Visible());
    EXPECT_EQ(List(2).Item(3).SmallIcon(), 2);
}

TEST_F(AWrittenRecipe, OfFiveMegabytesIsStored) {
    OpenNew();
    std::string text;
    while (text.size() < 5'000'000)
        text += "A line of a very long recipe from somewhere else.\r\n";
    Editor().rtbRecipe.SetText(text);
    ClickOn(Editor().ibAdd);
    EXPECT_FALSE(EditorShown());
    EXPECT_GE(TextOf(7).size(), text.size());
}

TEST_F(AWrittenRecipe, AddedByTheMenuIsStoredOnce) {
    OpenNew();
    MenuEntry("mnuAdd")->trigger();
    EXPECT_EQ(Main().store.TotalNumRecords, 7);
    EXPECT_FALSE(EditorShown());
}

class AnUpdatedRecipe : public AWrittenRecipe {};

TEST_F(AnUpdatedRecipe, ThatWasDeletedMeanwhileDoesNotComeBackAndTheTextStaysInTheEditor) {
    OpenOn(4);
    Type("Very ");
    Main().ownRecipes.DeleteRecipe(4, true, true);
    ASSERT_EQ(TitleOf(4), "");
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Couldn't update recipe #4");
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(Editor().rtbRecipe.Text().substr(0, 13), "Very Own Hake");
    EXPECT_EQ(TitleOf(4), "");
}

TEST_F(AnUpdatedRecipe, TakesItsFirstLineAsItsTitleWithoutWhiteSpaceBeforeIt) {
    OpenOn(4);
    TypeAnew(Editor().rtbRecipe, "  Fried Hake");
    Press(Qt::Key_Return);
    Type("Fry it.");
    ClickOn(Editor().ibAdd);
    EXPECT_FALSE(EditorShown());
    EXPECT_EQ(TitleOf(4), "Fried Hake");
    EXPECT_EQ(TextOf(4), "Fried Hake\r\nFry it.");
    EXPECT_EQ(Shown(2).front(), "Fried Hake");
}

TEST_F(AnUpdatedRecipe, LosesLinesAndTabsBeforeItsTitleAndNoFormatBehindThem) {
    OpenOn(4);
    Editor().rtbRecipe.SetTextRTF(
        "{\\rtf1\\ansi\\par \\tab \\par  \\b Fish pie\\b0\\tab for four\\par\\qc Bake\\i  "
        "it.\\par}");
    ASSERT_EQ(Editor().rtbRecipe.Text(), "\r\n\t\r\n Fish pie\tfor four\r\nBake it.\r\n");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(TitleOf(4), "Fish pie");
    EXPECT_EQ(TextOf(4), "Fish pie\tfor four\r\nBake it.\r\n");
    RichTextBox& stored = Main().ui.rtbT;
    stored.SetSelLength(8);
    EXPECT_EQ(stored.SelBold(), true);
    stored.Find("Bake", 0);
    EXPECT_EQ(stored.SelBold(), false);
    EXPECT_EQ(stored.SelAlignment(), RichTextBox::Alignment::Center);
    stored.Find(" it.", 0);
    EXPECT_EQ(stored.SelItalic(), true);
}

TEST_F(AnUpdatedRecipe, IsWrittenWithOrWithoutItsPictureChanging) {
    const std::string path = MakePicture("lunch.jpg");
    OpenOn(4);
    Type("Very ");
    Boxes.ThenFile(path);
    ClickOn(Editor().ibAssignPicture);
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
    EXPECT_EQ(Folder.Read(Photo("4.jpg")), Folder.Read("lunch.jpg"));
    OpenOn(5);
    Type("Very ");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(TitleOf(5), "Very Own Roe");
}

TEST_F(AnUpdatedRecipe, LeavesTheOthersAsTheyWere) {
    const std::string five = Main().store.GetRecipeRTF(5);
    OpenOn(4);
    Type("A much longer title than it had before, so that it no longer fits: ");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(Main().store.GetRecipeRTF(5), five);
    EXPECT_EQ(TitleOf(5), "Own Roe");
    EXPECT_EQ(TitleOf(6), "");
}

// Typing in the viewer, with "/E".
class InPlaceEditing : public AWrittenRecipe {
  protected:
    std::string CommandLine() const override { return "/E"; }
    void ShowText(int number) {
        Main().viewer.ShowRecipe(number);
        Main().ui.rtbSee.SetFocus();
    }
    void TypeInViewer(const std::string& text) {
        QTest::keyClicks(Main().ui.rtbSee.Native(), QString::fromStdString(text));
    }
};

TEST_F(InPlaceEditing, IsOpenOnEveryRecipeAndNothingIsModifiedByShowingIt) {
    ShowText(2);
    EXPECT_TRUE(Main().editor.InPlaceEdit());
    EXPECT_FALSE(Main().ui.rtbSee.Locked());
    EXPECT_FALSE(Main().viewer.Modified);
}

TEST_F(InPlaceEditing, AStockRecipeOpensInTheEditorToo) {
    OpenOn(2);
    EXPECT_EQ(Editor().window.Caption(), "Edit Recipe #2");
}

TEST_F(InPlaceEditing, EditRecipeInPlaceGivesTheViewerTheFocus) {
    ShowText(4);
    Focus(2);
    Main().editor.EditRecipe_InPlace();
    EXPECT_EQ(FocusedName(), "rtbSee");
    EXPECT_TRUE(Main().editor.InPlaceEdit());
    EXPECT_FALSE(EditorShown());
}

TEST_F(InPlaceEditing, WhatWasTypedIsStoredWhenAnotherRecipeIsShown) {
    ShowText(4);
    TypeInViewer("Very ");
    ShowText(5);
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
    EXPECT_EQ(TextOf(4), "Very Own Hake\r\nFry it.\r\nServe with lemon.\r\n");
    EXPECT_EQ(TitleOf(5), "Own Roe");
    EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 7), "Own Roe");
    EXPECT_FALSE(Main().viewer.Modified);
}

TEST_F(InPlaceEditing, WhatWasTypedIsStoredBeforeTheSameRecipeIsShownAgain) {
    ShowText(4);
    TypeInViewer("Very ");
    Main().viewer.ShowRecipe(-1);
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
    EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 13), "Very Own Hake");
    EXPECT_TRUE(Main().editor.InPlaceEdit()) << "typing goes on";
}

TEST_F(InPlaceEditing, WhatWasTypedIsStoredBeforeTheRecipeOpensInTheEditor) {
    ShowText(4);
    TypeInViewer("Very ");
    OpenOn(4);
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
    EXPECT_EQ(Editor().rtbRecipe.Text().substr(0, 13), "Very Own Hake");
}

TEST_F(InPlaceEditing, BelongsToTheRecipeInTheViewerThoughAnotherHasBecomeCurrent) {
    ShowText(4);
    Main().viewer.SetCurrentRecipe(5);
    TypeInViewer("Very ");
    Main().viewer.SetCurrentRecipe(2);
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
    EXPECT_EQ(TitleOf(5), "Own Roe");
}

TEST_F(InPlaceEditing, AnUntouchedTextIsNotStored) {
    ShowText(4);
    WatchFiles();
    ShowText(5);
    ShowText(2);
    EXPECT_TRUE(Changes.empty());
}

TEST_F(InPlaceEditing, AClearedTextIsNotStoredAndTheRecipeIsWhatItWas) {
    ShowText(4);
    QTest::keyClick(Main().ui.rtbSee.Native(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(Main().ui.rtbSee.Native(), Qt::Key_Delete);
    WatchFiles();
    ShowText(5);
    EXPECT_TRUE(Changes.empty());
    EXPECT_EQ(TitleOf(4), "Own Hake");
}

TEST_F(InPlaceEditing, DoesNotDisturbAnOpenEditorNorThePicture) {
    MakePicture(Photo("4.jpg"));
    OpenOn(5);
    Type("Half ");
    ShowText(4);
    TypeInViewer("Very ");
    ShowText(2);
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(Editor().lngRecipeNum, 5);
    EXPECT_EQ(Editor().window.Caption(), "Edit Recipe #5");
    EXPECT_EQ(Editor().rtbRecipe.Text().substr(0, 12), "Half Own Roe");
    EXPECT_TRUE(Folder.Exists(Photo("4.jpg")));
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
}

TEST_F(InPlaceEditing, ThatCannotBeWrittenStaysInTheViewerWithItsRecipe) {
    ShowText(4);
    TypeInViewer("Very ");
    Main().files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "write") throw Failure(failure::DiskFull, std::string(access.Path));
    });
    EXPECT_FALSE(Main().viewer.ShowRecipe(5));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 4);
    EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 13), "Very Own Hake");
    EXPECT_TRUE(Main().ui.rtbSee.Visible());
    EXPECT_TRUE(Main().viewer.Modified);
    Main().files.Watch(nullptr);
    EXPECT_TRUE(Main().viewer.ShowRecipe(5));
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
}

TEST_F(InPlaceEditing, OfARecipeThatIsDeletedIsNotStored) {
    ShowText(4);
    TypeInViewer("Very ");
    Main().ownRecipes.DeleteRecipe(4, true, true);
    ShowText(5);
    EXPECT_EQ(TitleOf(4), "");
}

TEST_F(InPlaceEditing, OfARecipeThatTheFilesDoNotHaveNowIsToldAndStaysInTheViewer) {
    for (const std::string name : {"Custom Recipes.ydb", "Custom Recipes Index.ind"}) {
        SCOPED_TRACE(name);
        ShowText(5);
        TypeInViewer("Very ");
        Main().files.CloseAll();
        const std::string bytes = Folder.Read("Data/" + name);
        Folder.Write("Data/" + name, bytes.substr(0, 4));
        EXPECT_FALSE(Main().viewer.ShowRecipe(2));
        ASSERT_FALSE(Boxes.Shown.empty());
        EXPECT_EQ(Boxes.Shown.back().Icon, Dialogs::Icon::Critical);
        EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 5), "Very ");
        EXPECT_TRUE(Main().viewer.Modified);
        Main().files.CloseAll();
        Folder.Write("Data/" + name, bytes);
        Boxes.Shown.clear();
        EXPECT_TRUE(Main().viewer.ShowRecipe(2));
        EXPECT_EQ(TitleOf(5).substr(0, 5), "Very ");
    }
}

TEST_F(InPlaceEditing, OfAStockRecipeIsStoredInTheStock) {
    ShowText(2);
    TypeInViewer("Very ");
    ShowText(4);
    EXPECT_EQ(TitleOf(2), "Very Eel");
}

}  // namespace
}  // namespace larder
