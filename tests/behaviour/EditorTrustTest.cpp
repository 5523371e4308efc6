// What the cook has typed or chosen is not lost by what the editor does to save it.

#include "behaviour/support/EditorBook.h"
#include "edit/frmAddRecipe.h"
#include "store/FileNumbers.h"

namespace larder {
namespace {

using test::EditorBook;

class EditorTrust : public EditorBook {
  protected:
    std::string TitleOf(int number) { return Main().store.GetRecipeTitle(number); }
    std::string TextOf(int number) {
        Main().ui.rtbT.SetTextRTF(Main().store.GetRecipeRTF(number));
        return Main().ui.rtbT.Text();
    }
    void FillTheDisk() {
        Main().files.Watch([](const NumberedFiles::Access& access) {
            if (access.Kind == "write") throw Failure(failure::DiskFull, std::string(access.Path));
        });
    }
    void FailReads() {
        Main().files.Watch([](const NumberedFiles::Access& access) {
            if (access.Kind == "read")
                throw Failure(failure::DeviceError, std::string(access.Path));
        });
    }
    void Assign(const std::string& nativePath) {
        Boxes.ThenFile(nativePath);
        ClickOn(Editor().ibAssignPicture);
    }
    bool Waits(const Window& window) { return window.Native()->cursor().shape() == Qt::WaitCursor; }
    void ExpectUsualPointers() {
        EXPECT_FALSE(Waits(Editor().window));
        EXPECT_FALSE(Waits(Main().ui.window));
    }
};

// Undo

TEST_F(EditorTrust, AFailedUpdateKeepsTheTextWithItsUndoAndTheCaret) {
    OpenOn(4);
    const std::string before = Editor().rtbRecipe.Text();
    Type(" Very ");
    FillTheDisk();
    ClickOn(Editor().ibAdd);
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(Editor().window.Caption(), "Edit Recipe #4");
    EXPECT_EQ(Editor().rtbRecipe.Text(), " Very " + before);
    EXPECT_EQ(Editor().rtbRecipe.SelStart(), 6);
    Editor().rtbRecipe.SetFocus();
    Ctrl(Qt::Key_Z);
    EXPECT_EQ(Editor().rtbRecipe.Text(), before);
}

TEST_F(EditorTrust, AFailedAddKeepsBothTextsWithTheirUndo) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Ling");
    const std::string before = Editor().rtbRecipe.Text();
    Editor().rtbRecipe.SetFocus();
    Type("Salt it. ");
    FillTheDisk();
    ClickOn(Editor().ibAdd);
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(Editor().rtbRecipe.Text(), "Salt it. " + before);
    EXPECT_EQ(Editor().rtbTitle.Text(), "Ling");
    Editor().rtbRecipe.SetFocus();
    Ctrl(Qt::Key_Z);
    EXPECT_EQ(Editor().rtbRecipe.Text(), before);
}

// Titles

TEST_F(EditorTrust, ATitleKeepsItsAlignmentAndTheTextItsOwn) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Grilled Ling");
    Editor().rtbTitle.SetSelAlignment(RichTextBox::Alignment::Center);
    TypeAnew(Editor().rtbRecipe, "Grill it.");
    Editor().rtbRecipe.SetSelAlignment(RichTextBox::Alignment::Right);
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(TextOf(7), "Grilled Ling\r\n\r\nGrill it.");
    OpenOn(7);
    Editor().rtbRecipe.SetSelStart(0);
    EXPECT_EQ(Editor().rtbRecipe.SelAlignment(), RichTextBox::Alignment::Center);
    Editor().rtbRecipe.Find("Grill it", 0);
    EXPECT_EQ(Editor().rtbRecipe.SelAlignment(), RichTextBox::Alignment::Right);
}

TEST_F(EditorTrust, ATitleEndsAtATabInTheListAndInTheText) {
    OpenNew();
    Editor().rtbTitle.SetText("Fish\tpie");
    Editor().rtbRecipe.SetText("Bake.");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(TitleOf(7), "Fish");
    EXPECT_EQ(TextOf(7), "Fish\r\n\r\nBake.");
}

TEST_F(EditorTrust, WhiteSpaceBeforeATitleIsNoPartOfIt) {
    OpenNew();
    Editor().rtbTitle.SetText(" \t \r\n Fish pie");
    Editor().rtbRecipe.SetText("Bake.");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(TitleOf(7), "Fish pie");
    EXPECT_EQ(TextOf(7), "Fish pie\r\n\r\nBake.");
}

// Closing

TEST_F(EditorTrust, TheWindowManagersCloseAsksForUnsavedWork) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Half a title");
    Boxes.Then(Dialogs::Answer::No);
    Editor().window.Close();
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Buttons, Dialogs::Buttons::YesNoPreferNo);
    EXPECT_TRUE(EditorShown());
    EXPECT_EQ(Editor().rtbTitle.Text(), "Half a title");
    Boxes.Then(Dialogs::Answer::Yes);
    Editor().window.Close();
    EXPECT_FALSE(EditorShown());
}

TEST_F(EditorTrust, TheMainWindowAsksForUnsavedWorkInTheEditorBeforeItCloses) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Half a title");
    Boxes.Then(Dialogs::Answer::No);
    Main().ui.window.Close();
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_TRUE(Main().ui.window.Visible());
    EXPECT_EQ(Editor().rtbTitle.Text(), "Half a title");
    Boxes.Then(Dialogs::Answer::Yes);
    Main().ui.window.Close();
    EXPECT_FALSE(Main().ui.window.Visible());
    EXPECT_FALSE(EditorShown());
}

TEST_F(EditorTrust, AnUntouchedEditorClosesWithTheMainWindowWithoutAQuestion) {
    OpenNew();
    Main().ui.window.Close();
    EXPECT_FALSE(Main().ui.window.Visible());
    EXPECT_TRUE(Boxes.Shown.empty());
}

// Records that cannot be read

TEST_F(EditorTrust, ARecipeWhoseTextCannotBeReadDoesNotOpen) {
    Main().files.WriteRecord(filenumber::CustomRecipesIndex, 2, 1'000'000);
    ASSERT_EQ(TitleOf(4), "Own Hake");
    Main().editor.LoadRecipeToUpdate(4);
    EXPECT_FALSE(EditorShown());
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Couldn't read recipe #4");
    OpenNew();
    EXPECT_EQ(Editor().window.Caption(), "Add Recipe");
    EXPECT_EQ(Editor().lngRecipeNum, 7);
}

TEST_F(EditorTrust, ARecipeWhoseDiscIsGivenUpDoesNotOpen) {
    Main().files.Watch([](const NumberedFiles::Access& access) {
        if (access.Kind == "read") throw Failure(failure::PathAccess, std::string(access.Path));
    });
    Main().editor.LoadRecipeToUpdate(4);
    EXPECT_FALSE(EditorShown());
    ASSERT_EQ(Boxes.Shown.size(), 2U) << "the disc is asked for once";
    EXPECT_TRUE(Boxes.Shown[0].Text.ends_with("\rPlease, make sure the CD is in the drive."));
    EXPECT_EQ(Boxes.Shown[1].Text, "Couldn't read recipe #4");
}

TEST_F(EditorTrust, ARecipeThatTheDiskDoesNotGiveIsToldAndADeletedOneIsNot) {
    Main().editor.LoadRecipeToUpdate(6);
    EXPECT_TRUE(Boxes.Shown.empty());
    FailReads();
    Main().editor.LoadRecipeToUpdate(4);
    EXPECT_FALSE(EditorShown());
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Couldn't read recipe #4");
}

// Failures on the way

TEST_F(EditorTrust, AFailureBehindTheStoringIsToldAndTheRecipeIsAddedOnce) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Ling");
    const auto counted = Main().store.OnTotalRecipes;
    Main().store.OnTotalRecipes = [](std::int32_t) { throw Failure(failure::DeviceError, "test"); };
    ClickOn(Editor().ibAdd);
    Main().store.OnTotalRecipes = counted;
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_NE(Boxes.Shown[0].Text.find(FailureText(failure::DeviceError)), std::string::npos);
    EXPECT_EQ(Main().store.TotalNumRecords, 7);
    EXPECT_FALSE(EditorShown()) << "it would be added once more";
    ExpectUsualPointers();
}

TEST_F(EditorTrust, ANewRecipeThatCannotBeAddedCopiesNoPictureAndKeepsTheChoice) {
    const std::string path = MakePicture("lunch.jpg");
    OpenNew();
    Assign(path);
    FillTheDisk();
    ClickOn(Editor().ibAdd);
    EXPECT_TRUE(EditorShown());
    EXPECT_FALSE(Folder.Exists(Photo("7.jpg")));
    EXPECT_EQ(Editor().picture.NewPictureFileName(), PathOfPhoto("7.jpg"));
    EXPECT_FALSE(Editor().imgPicPreview.Shown().IsEmpty());
    Main().files.Watch(nullptr);
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(Folder.Read(Photo("7.jpg")), Folder.Read("lunch.jpg"));
}

TEST_F(EditorTrust, APictureForARecipeThatWasDeletedMeanwhileIsNotCopied) {
    const std::string path = MakePicture("lunch.jpg");
    OpenOn(4);
    Assign(path);
    Main().ownRecipes.DeleteRecipe(4, true, true);
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Couldn't update recipe #4");
    EXPECT_TRUE(EditorShown());
    EXPECT_FALSE(Folder.Exists(Photo("4.jpg")));
    EXPECT_FALSE(Main().pictures.HasPicture("4"));
}

// The look of work

class SavingLook : public EditorTrust {
  protected:
    // Looks at both windows at every write from now on.
    void Look(bool fails) {
        Main().files.Watch([this, fails](const NumberedFiles::Access& access) {
            if (access.Kind != "write") return;
            ++Writes;
            Waiting = Waiting && Waits(Editor().window) && Waits(Main().ui.window);
            TabStops = TabStops || IsTabStop();
            if (Caption.empty()) Caption = Editor().window.Caption();
            if (fails) throw Failure(failure::DiskFull, std::string(access.Path));
        });
    }
    bool IsTabStop() { return (Editor().rtbRecipe.Native()->focusPolicy() & Qt::TabFocus) != 0; }
    int Writes = 0;
    bool Waiting = true;
    bool TabStops = false;  // Tab led into the recipe at some write
    std::string Caption;    // at the first write
};

TEST_F(SavingLook, OfAnAddIsTheHourglassAndItsCaption) {
    for (const bool fails : {true, false}) {
        OpenNew();
        Look(fails);
        ClickOn(Editor().ibAdd);
        EXPECT_GT(Writes, 0);
        EXPECT_TRUE(Waiting);
        EXPECT_EQ(Caption, "Adding Recipe. One moment please...");
        EXPECT_FALSE(TabStops);
        EXPECT_TRUE(IsTabStop());
        EXPECT_EQ(EditorShown(), fails);
        if (fails) {
            EXPECT_EQ(Editor().window.Caption(), "Add Recipe");
        }
        ExpectUsualPointers();
    }
}

TEST_F(SavingLook, OfAnUpdateIsTheHourglassAndItsCaption) {
    OpenOn(4);
    Type("Very ");
    for (const bool fails : {true, false}) {
        Look(fails);
        ClickOn(Editor().ibAdd);
        EXPECT_GT(Writes, 0);
        EXPECT_TRUE(Waiting);
        EXPECT_EQ(Caption, "Updating Recipe. One moment please...");
        EXPECT_FALSE(TabStops);
        EXPECT_TRUE(IsTabStop());
        if (fails) {
            EXPECT_EQ(Editor().window.Caption(), "Edit Recipe #4");
        }
        ExpectUsualPointers();
    }
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
}

TEST_F(SavingLook, OfARefusalIsTheUsualOneWhenItIsTold) {
    OpenNew();
    Editor().rtbTitle.SetText(" ");
    bool usual = false;
    Boxes.Then(Dialogs::Answer::Ok,
               [&] { usual = !Waits(Editor().window) && !Waits(Main().ui.window); });
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_TRUE(usual);
    EXPECT_EQ(Editor().window.Caption(), "Add Recipe");
    ExpectUsualPointers();
}

TEST_F(SavingLook, OfARecipeThatIsNotCurrentEndsWithTheCurrentOneOrWithItsNewPicture) {
    const std::string path = MakePicture("lunch.jpg");
    Main().viewer.ShowRecipe(5);
    OpenOn(4);
    Type("Very ");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 5);
    EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 7), "Own Roe");
    OpenOn(4);
    Type("Very ");
    Assign(path);
    std::vector<std::string> order;
    Main().files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind != "write" && access.Kind != "rename") return;
        const bool picture = access.Path.find("Food Photos") != std::string_view::npos;
        const bool set = access.Path.find("Categories") != std::string_view::npos;
        const std::string now = picture ? "picture" : set ? "set" : "text";
        if (order.empty() || order.back() != now) order.push_back(now);
    });
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(order, (std::vector<std::string>{"text", "picture", "set"}));
    EXPECT_EQ(Main().viewer.CurrentRecipe(), 4);
    EXPECT_TRUE(Main().ui.frPic.Visible());
}

// Clicks

TEST_F(EditorTrust, EveryButtonAndEveryMenuEntryOfTheEditorClicksOnce) {
    int clicks = 0;
    Main().sound.OnPlay = [&](const std::string&) { ++clicks; };
    OpenOn(4);
    Editor().picture.SetNewPictureFileName("x");  // shows the button that removes it
    for (ImageButton* button :
         {&Editor().ibPaste, &Editor().ibBold, &Editor().ibItalic, &Editor().ibUnderline,
          &Editor().ibLeft, &Editor().ibCenter, &Editor().ibRight, &Editor().ibSpell,
          &Editor().ibPrint, &Editor().ibAssignPicture, &Editor().ibRemovePicture}) {
        clicks = 0;
        ClickOn(*button);
        EXPECT_EQ(clicks, 1) << button->Name();
    }
    for (const char* entry :
         {"mnuCopy", "mnuCut", "mnuPaste", "mnuBold", "mnuUnderline", "mnuItalic"}) {
        clicks = 0;
        MenuEntry(entry)->trigger();
        EXPECT_EQ(clicks, 1) << entry;
    }
    clicks = 0;
    ClickOn(Editor().ibCancel);
    OpenOn(4);
    ClickOn(Editor().ibAdd);
    OpenOn(4);
    MenuEntry("mnuCancel")->trigger();
    OpenOn(4);
    MenuEntry("mnuAdd")->trigger();
    EXPECT_EQ(clicks, 4);
}

// With "/E"

class InPlaceTrust : public SavingLook {
  protected:
    std::string CommandLine() const override { return "/E"; }
    void TypeInViewer(int number, const std::string& text) {
        ASSERT_TRUE(Main().viewer.ShowRecipe(number));
        Main().ui.rtbSee.SetFocus();
        QTest::keyClicks(Main().ui.rtbSee.Native(), QString::fromStdString(text));
    }
};

TEST_F(InPlaceTrust, WhatWasTypedInTheViewerIsStoredBeforeTheEditorSaves) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Ling");
    TypeInViewer(4, "Very ");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
    EXPECT_EQ(TitleOf(7), "Ling");
    EXPECT_TRUE(Main().editor.InPlaceEdit());
}

TEST_F(InPlaceTrust, WhatCannotBeStoredFromTheViewerKeepsTheEditorFromSaving) {
    OpenNew();
    TypeAnew(Editor().rtbTitle, "Ling");
    TypeInViewer(4, "Very ");
    FillTheDisk();
    ClickOn(Editor().ibAdd);
    ASSERT_EQ(Boxes.Shown.size(), 2U) << "the maintainer's notice, and the failure";
    EXPECT_EQ(Boxes.Shown[1].Text, "Error updating recipe\nDisk full");
    EXPECT_EQ(Editor().window.Caption(), "Add Recipe");
    EXPECT_EQ(Main().store.TotalNumRecords, 6);
    EXPECT_TRUE(EditorShown());
    EXPECT_TRUE(Main().viewer.Modified);
    EXPECT_TRUE(Main().editor.InPlaceEdit());
    EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 13), "Very Own Hake");
}

TEST_F(InPlaceTrust, ARefusedAddLeavesTheViewerOpenToTyping) {
    OpenNew();
    Editor().rtbTitle.SetText("");
    TypeInViewer(4, "Very ");
    ClickOn(Editor().ibAdd);
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
    EXPECT_TRUE(EditorShown());
    EXPECT_TRUE(Main().editor.InPlaceEdit());
    QTest::keyClicks(Main().ui.rtbSee.Native(), "New ");
    EXPECT_TRUE(Main().viewer.Modified);
}

TEST_F(InPlaceTrust, TheHourglassIsSeenWhileTheViewersTextIsStored) {
    OpenNew();
    TypeInViewer(4, "Very ");
    for (const bool fails : {true, false}) {
        Look(fails);
        EXPECT_EQ(Main().editor.SaveInPlaceEdit(), !fails);
        EXPECT_GT(Writes, 0);
        EXPECT_TRUE(Waiting);
        ExpectUsualPointers();
    }
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
}

TEST_F(InPlaceTrust, AnotherSizeOfTheWindowChangesNoFormatOfTheText) {
    ASSERT_TRUE(Main().viewer.ShowRecipe(4));
    const std::string before = Main().ui.rtbSee.TextRTF();
    Main().fonts.DoFontSizes(1.7F);
    EXPECT_EQ(Main().ui.rtbSee.TextRTF(), before);
    EXPECT_EQ(Main().ui.rtbSee.Tag, "22");
}

TEST_F(InPlaceTrust, WhatWasTypedStaysWhileTheDiskDoesNotGiveItsRecord) {
    TypeInViewer(4, "Very ");
    FailReads();
    EXPECT_FALSE(Main().viewer.ShowRecipe(5));
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_EQ(Boxes.Shown[0].Text, "Error updating recipe\nDevice I/O error");
    EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 13), "Very Own Hake");
    EXPECT_TRUE(Main().viewer.Modified);
    Main().files.Watch(nullptr);
    EXPECT_TRUE(Main().viewer.ShowRecipe(5));
    EXPECT_EQ(TitleOf(4), "Very Own Hake");
}

TEST_F(InPlaceTrust, TheNoticeOfADeletedRecipeIsNotOpenToTyping) {
    Main().viewer.ShowRecipe(6);
    EXPECT_EQ(Main().ui.rtbSee.Text().substr(0, 28), "The recipe 6 is unavailable ");
    EXPECT_TRUE(Main().ui.rtbSee.Locked());
    EXPECT_EQ(Main().viewer.RecipeInBox, 0);
    Main().editor.EditRecipe_InPlace();
    EXPECT_TRUE(Main().ui.rtbSee.Locked());
    Main().viewer.ShowRecipe(5);
    EXPECT_FALSE(Main().ui.rtbSee.Locked());
}

TEST_F(InPlaceTrust, ATextThatCannotBeReadIsNotOpenToTyping) {
    Main().files.WriteRecord(filenumber::CustomRecipesIndex, 2, 1'000'000);
    Main().viewer.ShowRecipe(4);
    EXPECT_EQ(Main().viewer.RecipeInBox, 0);
    EXPECT_TRUE(Main().ui.rtbSee.Locked());
    Main().editor.EditRecipe_InPlace();
    EXPECT_TRUE(Main().ui.rtbSee.Locked());
    Main().viewer.ShowRecipe(2);
    EXPECT_FALSE(Main().ui.rtbSee.Locked());
}

TEST_F(InPlaceTrust, TheViewerThatADeletionHasEmptiedIsNotOpenToTyping) {
    ASSERT_TRUE(Main().viewer.ShowRecipe(4));
    for (const int number : {4, 5}) {
        Boxes.Then(Dialogs::Answer::Ok);
        Main().ownRecipes.DeleteRecipe(number, true, false);
    }
    EXPECT_EQ(Main().viewer.CurrentRecipe(), -1);
    EXPECT_EQ(Main().viewer.RecipeInBox, 0);
    EXPECT_FALSE(Main().editor.InPlaceEdit());
    QTest::keyClicks(Main().ui.rtbSee.Native(), "lost");
    EXPECT_EQ(Main().ui.rtbSee.Text(), "");
    Main().viewer.ShowRecipe(2);
    EXPECT_FALSE(Main().ui.rtbSee.Locked());
}

TEST_F(InPlaceTrust, StoringWhatWasTypedClicks) {
    TypeInViewer(4, "Very ");
    int clicks = 0;
    Main().sound.OnPlay = [&](const std::string&) { ++clicks; };
    EXPECT_TRUE(Main().editor.SaveInPlaceEdit());
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(Main().editor.SaveInPlaceEdit());
    EXPECT_EQ(clicks, 1) << "with nothing to store";
}

}  // namespace
}  // namespace larder
