#include "app/StartUp.h"

#include <sstream>

#include "app/frmMain.h"
#include "lists/NumberString.h"
#include "platform/Text.h"

namespace larder {

namespace {

// A record that was overwritten with blanks. One that cannot be read has no body either, and may
// be there again at the next start.
bool IsDeleted(frmMain& main, std::int32_t recipeNum) {
    if (!main.store.GetRecipeTitle(recipeNum).empty()) return false;
    std::string body;
    Ignoring([&] { body = main.store.GetRecipeRTF(recipeNum); });
    return !body.empty() && body.find_first_not_of(" \r\n") == std::string::npos;
}

std::vector<std::int32_t> DeletedAmong(frmMain& main, const std::string& numbers) {
    std::vector<std::int32_t> deleted;
    std::istringstream tokens(numbers);
    for (std::string token; tokens >> token;) {
        std::int32_t number = 0;
        if (!IsNumeric(token) || Ignoring([&] { number = ToLong(token); }) != 0) continue;
        const bool own =
            number > main.store.OriginalNumRecords && number <= main.store.TotalNumRecords;
        if (own && IsDeleted(main, number)) deleted.push_back(number);
    }
    return deleted;
}

// A deletion that was cut short behind its record comes to its end: the recipe goes from the
// favourites, and from the pictures with its picture. The start writes no file of its own accord:
// the next change of the categories carries it.
void FinishDeletions(frmMain& main) {
    if (main.store.TotalRecipes() == main.store.TotalNumRecords) return;
    const RecipeStore::OneDiscQuestion asksOnce(main.store);
    for (const char* name : {"MY FAVORITES", "ALL RECIPES WITH PICTURES"}) {
        VirtualListItem* entry = main.VList[0].PeekKey(name);
        if (entry == nullptr) continue;
        for (const std::int32_t number : DeletedAmong(main, entry->Tag)) {
            main.pictures.DeleteFiles(number, {});
            main.YS.ReplaceStr(entry->Tag, Blanked(number), " ");
        }
    }
    main.pictures.TakeFromCategories();
}

}  // namespace

bool StartUp::Run() {
    main.paths.strPath = main.objFSO.Alias(main.app.CurrentFolder()) + "\\Data\\";
    if (!main.instance.Claim(main.objFSO.Native(main.paths.strPath))) return false;
    if (!ChoosePaths()) return false;
    main.paths.Assign(main.paths.strPath, main.paths.strPathCD);
    main.booEditMode = CommandLineHolds("/E");
    main.ui.rtbSee.SetLocked(!main.booEditMode);
    main.layout.InitResize();
    LoadBackground();
    main.ui.window.SetWindowState(Window::Maximized);
    OpenFiles();
    main.categories.LoadCategories();
    FinishDeletions(main);
    layoutBegun_ = true;
    main.ui.window.Show();
    main.layout.ResizeIt();
    main.categories.SimulateCategoryClick("MY FAVORITES");
    main.ui.rtbSee.SetTransparent(true);
    return true;
}

bool StartUp::ChoosePaths() {
    DataPaths& paths = main.paths;
    const bool discAsked = CommandLineHolds("/CD");
    if (!discAsked && main.objFSO.FileExists(paths.strPath + "Recipes.ydb")) {
        paths.strPathCD = paths.strPath;
    } else {
        paths.strPathCD = FindCD();
        if (paths.strPathCD.empty()) {
            main.dialogs.MessageBox(
                "The Program needs Tidewell Larder CD to run. If you wish to use the program "
                "without the CD present in the computer, please reinstall it with option to run "
                "from the hard drive.",
                Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation, "Tidewell Larder");
            return false;
        }
    }
    if (!discAsked && main.objFSO.FileExists(paths.strPath + "Galley Reel Video.avi")) {
        paths.strVideoPath = paths.strPath;
    }
    return true;
}

std::vector<char> StartUp::MapDiscs() {
    std::vector<char> letters;
    main.objFSO.ForgetDrives();
    for (const Drive& drive : main.drives.List()) {
        if (drive.DriveType != Drive::CdRom || drive.MountPoint.empty()) continue;
        main.objFSO.MapDrive(drive.DriveLetter, drive.MountPoint);
        letters.push_back(drive.DriveLetter);
    }
    return letters;
}

std::string StartUp::FindCD() {
    for (;;) {
        std::string found;
        for (const char letter : MapDiscs()) {
            const std::string root = std::string(1, letter) + ":\\";
            if (main.objFSO.FileExists(root + "Data\\Recipes.ydb")) found = root + "Data\\";
        }
        if (!found.empty()) return found;
        const auto answer = main.dialogs.MessageBox(
            "Please put Tidewell Larder CD in the drive and then click OK.",
            Dialogs::Buttons::OkCancel, Dialogs::Icon::Exclamation, "Tidewell Larder");
        if (answer != Dialogs::Answer::Ok) return {};
    }
}

bool StartUp::CommandLineHolds(const std::string& text) const {
    return UpperCase(main.app.CommandLine()).find(text) != std::string::npos;
}

void StartUp::LoadBackground() {
    // The ground is an ornament: without its file the window is plain and everything works.
    Ignoring([this] {
        const std::string file = main.objFSO.Native(main.paths.strPath + "RecipeView.jpg");
        main.ui.imgBackGroundMain.SetPicture(Picture::FromFile(file));
    });
}

void StartUp::OpenFiles() {
    main.ownRecipes.SettleLastRun();
    main.store.OpenYDB_IND_Normal();
    main.store.OpenCategoryDescriptions();
}

}  // namespace larder
