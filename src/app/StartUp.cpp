#include "app/StartUp.h"

#include "app/frmMain.h"
#include "platform/Text.h"

namespace larder {

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
