#pragma once

#include <array>
#include <cstdint>
#include <fstream>
#include <string>

#include "app/MainControls.h"
#include "app/MainEvents.h"
#include "app/ScreenStates.h"
#include "app/StartUp.h"
#include "browse/ListInput.h"
#include "browse/ListSteps.h"
#include "browse/ListWindow.h"
#include "browse/PictureView.h"
#include "browse/RecipeList.h"
#include "browse/RecipeViewer.h"
#include "edit/EditDialogs.h"
#include "edit/RecipeEditor.h"
#include "layout/FontSizing.h"
#include "layout/WindowLayout.h"
#include "lists/CategoryList.h"
#include "lists/Favorites.h"
#include "lists/GrowingListObserver.h"
#include "lists/ListTicket.h"
#include "lists/PictureSet.h"
#include "lists/VirtualList.h"
#include "lists/YStrings.h"
#include "platform/Application.h"
#include "platform/CommonDialog.h"
#include "platform/Dialogs.h"
#include "platform/Drives.h"
#include "platform/Failure.h"
#include "platform/NumberedFiles.h"
#include "platform/Paths.h"
#include "platform/SingleInstance.h"
#include "platform/Sound.h"
#include "search/RecipeSearch.h"
#include "store/DataPaths.h"
#include "store/OwnRecipes.h"
#include "store/RecipeStore.h"

namespace larder {

// The main window: the hub that owns the data, the controls and one object of each servant class.
// A servant keeps a reference to it and reaches the others through it (`main.viewer.ShowRecipe`).
// It holds no algorithm beyond start and end.
class frmMain final : private GrowingListObserver, private DiscQuestion {
  public:
    // The outside world comes from the caller and outlives the window.
    frmMain(Application& application, Dialogs& dialogs, Drives& drives);
    ~frmMain() override;

    // From nothing to the first screen. False when the program is to end at once: the reason has
    // been shown. ExitStatus tells with which status.
    bool Load();
    // What the window does when it is closed, in whatever way.
    void Unload();
    int ExitStatus() const { return exitStatus_; }

    // Writes a line to objLogFile. Nothing opens that stream, so in a normal run it goes nowhere.
    void LogLine(const std::string& strLine);
    // The sound of every button and list press.
    void SoundClick();
    // Asks the user for the disc. True for OK: the drives have been looked at anew by then, because
    // a disc may come back at another place. A closed window asks nothing.
    bool AskOkCancel(const std::string& text) override;
    // AskOkCancel waits for its answer. Events run meanwhile, and must read nothing from the disc:
    // that would ask for it again.
    bool QuestionUp() const { return questions_ > 0; }

    Application& app;
    Dialogs& dialogs;
    Drives& drives;
    Sound sound;

    // Data.
    Paths objFSO;
    SingleInstance instance;  // outlives the open files
    CommonDialog cdgDialogBox{dialogs, objFSO};
    NumberedFiles files{objFSO};
    DataPaths paths;
    RecipeStore store;
    YStrings YS;
    ListTicket intListTicket;
    std::array<VirtualList, 2> VList;  // 0 the categories, 1 the list behind lvwX(2)

    // State that several servants share. Elements by list number minus 1.
    std::array<std::int16_t, 3> LinesInList{};  // whole lines that fit; [2] the page of rtbSee
    std::array<std::string, 2> strSelectedKey{"0", "0"};
    std::string strLastSearchWords;
    std::string strLastRecipeCategory;
    bool booEditMode = false;

    MainControls ui;

    // Servants.
    StartUp startUp{*this};
    WindowLayout layout{*this};
    FontSizing fonts{*this};
    ScreenStates screen{*this};
    CategoryList categories{*this};
    PictureSet pictures{*this};
    Favorites favorites{*this};
    ListWindow lists{*this};
    ListSteps steps{*this};
    RecipeList recipes{*this};
    RecipeViewer viewer{*this};
    PictureView pictureView{*this};
    RecipeSearch search{*this};
    RecipeEditor editor{*this};
    OwnRecipes ownRecipes{*this};
    EditDialogs editDialogs{*this};
    ListInput listInput{*this};
    MainEvents events{*this};

  private:
    std::int16_t LinesOnScreen() const override { return LinesInList[1]; }
    std::int32_t OriginalNumRecords() const override { return store.OriginalNumRecords; }
    bool HasPicture(const std::string& strRecipeNum) const override;
    std::string GetRecipeTitle(std::int32_t recipeNum) override;
    bool IsGone(std::int32_t recipeNum) override;
    bool IsBlank(std::int32_t recipeNum) override;
    void ShowSame() override;
    void DecorateWait(bool start, const std::string& what) override;
    void UpdateScroll() override {}
    void ReportRecipesFound(const std::string& append) override;
    void LetEventsRun() override { Application::DoEvents(); }

    std::ofstream objLogFile;
    int exitStatus_ = 0;
    int questions_ = 0;  // AskOkCancel in AskOkCancel
    bool unloaded_ = false;
};

}  // namespace larder
