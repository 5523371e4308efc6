#include "app/StartUp.h"

#include <QWidget>
#include <filesystem>
#include <map>

#include "app/frmMain.h"
#include "behaviour/support/MainWindowFixture.h"
#include "store/FileNumbers.h"
#include "support/Unprivileged.h"

namespace larder::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* NoDiscMessage =
    "The Program needs Tidewell Larder CD to run. If you wish to use the program without the CD "
    "present in the computer, please reinstall it with option to run from the hard drive.";
constexpr const char* DiscQuestionText =
    "Please put Tidewell Larder CD in the drive and then click OK.";

// Two stock recipes on the hard disk, and discs with other texts of the same length, so that the
// index fits both.
class StartUpTest : public MainWindowFixture {
  protected:
    StartUpTest() {
        Book.AddStock("Cod from disk");
        Book.AddStock("Eel from disk");
        Book.Numbers("MY FAVORITES") = " 2 1 ";
        Book.Numbers("ALL RECIPES WITH PICTURES") = " 1 ";
    }

    // A disc whose titles end with a word of four letters.
    std::string MakeDisc(const std::string& name, const std::string& word) {
        CookBook other;
        other.AddStock("Cod from " + word);
        other.AddStock("Eel from " + word);
        TempFolder made;
        other.WriteTo(made);
        Folder.Write(name + "/Data/Recipes.ydb", made.Read("Data/Recipes.ydb"));
        return Folder.Native(name);
    }
    void Insert(char letter, const std::string& mountPoint, int type = Drive::CdRom) {
        Machine.Now.push_back({letter, type, mountPoint});
    }
    std::string TitleOf(int number) { return Main().store.GetRecipeTitle(number); }

    // Every file of the installation, by name.
    std::map<std::string, std::string> Files() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(Folder.Native())) {
            if (!entry.is_regular_file()) continue;
            const std::string name = fs::relative(entry.path(), Folder.Native()).string();
            files[name] = Folder.Read(name);
        }
        return files;
    }
    // The start has ended with one box, which names the file, and with status 1.
    void ExpectFatal(const std::string& file) {
        ASSERT_EQ(Boxes.Shown.size(), 1U);
        EXPECT_NE(Boxes.Shown[0].Text.find(file), std::string::npos) << Boxes.Shown[0].Text;
        EXPECT_EQ(Boxes.Shown[0].Icon, Dialogs::Icon::Critical);
        EXPECT_EQ(Boxes.Shown[0].Title, "Tidewell Larder");
        EXPECT_EQ(Main().ExitStatus(), 1);
        EXPECT_FALSE(Main().ui.window.Visible());
    }
};

TEST_F(StartUpTest, TheFirstScreenIsTheFavouritesWithTheirRecipes) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(Main().ui.lblCategory.Caption(), "MY FAVORITES");
    EXPECT_EQ(SelectedLine(1), 1);
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 1}));
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_TRUE(Main().ui.window.Visible());
    EXPECT_EQ(Main().ui.window.Caption(), "Tidewell Larder");
}

TEST_F(StartUpTest, TheWindowIsMaximised) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(Main().ui.window.WindowState(), Window::Maximized);
}

TEST_F(StartUpTest, AHardDiskInstallationReadsEverythingFromItsDataFolder) {
    ASSERT_TRUE(Start());
    EXPECT_TRUE(Main().paths.strPath.ends_with("\\Data\\"));
    EXPECT_EQ(Main().paths.strPathCD, Main().paths.strPath);
    EXPECT_EQ(Machine.Asked, 0);
    EXPECT_EQ(TitleOf(1), "Cod from disk");
}

TEST_F(StartUpTest, ThePathMembersAreSetFromTheTwoRoots) {
    const std::string disc = MakeDisc("disc", "face");
    Insert('E', disc);
    ASSERT_TRUE(Start("/CD"));
    const DataPaths& paths = Main().paths;
    EXPECT_EQ(paths.strPathCD, "E:\\Data\\");
    EXPECT_EQ(paths.strRecipesFile, "E:\\Data\\Recipes.ydb");
    EXPECT_EQ(paths.strPhotosPathCD, "E:\\Data\\Food Photos\\");
    EXPECT_EQ(paths.strPhotosPath, paths.strPath + "Food Photos\\");
    EXPECT_EQ(paths.strCategoriesFile, paths.strPath + "Categories.ctg");
    EXPECT_EQ(paths.strCatDSourceFile, paths.strPath + "util\\FISH DIRECTORY.rtf");
}

TEST_F(StartUpTest, TheFilesOfTheWholeRunAreOpenAndTheOthersAreNot) {
    Book.AddOwn("Mine");
    ASSERT_TRUE(Start());
    for (const int number : {1, 2, 3, 4, 21, 22}) {
        EXPECT_TRUE(Main().files.IsOpen(number)) << number;
    }
    for (const int number : {8, 11, 12, 33, 34}) {
        EXPECT_FALSE(Main().files.IsOpen(number)) << number;
    }
}

TEST_F(StartUpTest, AFirstRunWithoutOwnRecipesShowsTheFavouritesWithNoMessage) {
    ASSERT_TRUE(Start());
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 1}));
    EXPECT_TRUE(Folder.Exists("Data/Custom Recipes Index.ind"));
    EXPECT_EQ(Folder.Read("Data/Custom Recipes Index.ind"), "");
    EXPECT_FALSE(Folder.Exists("Data/Custom Recipes.ydb"));
    EXPECT_FALSE(Main().files.IsOpen(filenumber::CustomRecipes));
    EXPECT_TRUE(Main().files.IsOpen(filenumber::CustomRecipesIndex));
    EXPECT_EQ(Main().store.TotalNumRecords, 2);
}

TEST_F(StartUpTest, TheSwitchCDTakesTheStockTextFromTheDiscAndAllElseFromTheHardDisk) {
    Book.AddOwn("Mine");
    Folder.Write("Data/Galley Reel Video.avi", "film");
    Insert('E', MakeDisc("disc", "face"));
    ASSERT_TRUE(Start("/CD"));
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(TitleOf(1), "Cod from face");
    EXPECT_EQ(TitleOf(3), "Mine");
    EXPECT_EQ(Main().store.GetCatTitle(1), "COD");
    EXPECT_EQ(ShownNumbers(), (std::vector<int>{2, 1}));
    EXPECT_EQ(Main().paths.strVideoPath, "");
}

TEST_F(StartUpTest, ASwitchInLowerCaseWorks) {
    Insert('E', MakeDisc("disc", "face"));
    ASSERT_TRUE(Start("/cd /e"));
    EXPECT_EQ(TitleOf(1), "Cod from face");
    EXPECT_TRUE(Main().booEditMode);
}

TEST_F(StartUpTest, AnyArgumentThatHoldsASwitchCounts) {
    Insert('E', MakeDisc("disc", "face"));
    ASSERT_TRUE(Start("first x/cdrom/exit"));
    EXPECT_EQ(Main().paths.strPathCD, "E:\\Data\\");
    EXPECT_TRUE(Main().booEditMode);
}

TEST_F(StartUpTest, OtherArgumentsChangeNothing) {
    ASSERT_TRUE(Start("CD E -CD --help"));
    EXPECT_EQ(Main().paths.strPathCD, Main().paths.strPath);
    EXPECT_FALSE(Main().booEditMode);
}

TEST_F(StartUpTest, TheViewerIsLockedUnlessTheSwitchEUnlocksIt) {
    ASSERT_TRUE(Start());
    EXPECT_TRUE(Main().ui.rtbSee.Locked());
    ASSERT_TRUE(Restart("/E"));
    EXPECT_FALSE(Main().ui.rtbSee.Locked());
}

TEST_F(StartUpTest, TheVideoPathIsSetOnlyWhenTheVideoLiesOnTheHardDisk) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(Main().paths.strVideoPath, "");
    Folder.Write("Data/Galley Reel Video.avi", "film");
    ASSERT_TRUE(Restart());
    EXPECT_EQ(Main().paths.strVideoPath, Main().paths.strPath);
}

TEST_F(StartUpTest, WithoutTheStockTextOnTheHardDiskTheDiscIsUsed) {
    Insert('E', MakeDisc("disc", "face"));
    Book.WriteTo(Folder);
    Folder.Delete("Data/Recipes.ydb");
    ASSERT_TRUE(Restart());
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_EQ(TitleOf(2), "Eel from face");
    EXPECT_EQ(Shown(2), (std::vector<std::string>{"Eel from face", "Cod from face"}));
}

TEST_F(StartUpTest, TheIndexOnTheHardDiskIsUsedForTheTextOnTheDiscWithoutACheck) {
    Insert('E', MakeDisc("disc", "face"));
    Book.WriteTo(Folder);
    Folder.Write("Data/Recipes Index.ind", IndexBytes({5, 1, 1}));
    ASSERT_TRUE(Restart("/CD"));
    EXPECT_EQ(Main().store.OriginalNumRecords, 3);
    EXPECT_EQ(TitleOf(1), "from face");
}

TEST_F(StartUpTest, OfTwoDiscsTheOneInTheLaterDriveIsUsed) {
    Insert('E', MakeDisc("disc1", "face"));
    Insert('F', MakeDisc("disc2", "port"));
    ASSERT_TRUE(Start("/CD"));
    EXPECT_EQ(Main().paths.strPathCD, "F:\\Data\\");
    EXPECT_EQ(TitleOf(1), "Cod from port");
}

TEST_F(StartUpTest, ALaterDriveWithoutTheRecipesDoesNotCount) {
    Insert('E', MakeDisc("disc", "face"));
    Folder.MakeFolder("music");
    Insert('F', Folder.Native("music"));
    Insert('G', "");
    ASSERT_TRUE(Start("/CD"));
    EXPECT_EQ(Main().paths.strPathCD, "E:\\Data\\");
}

TEST_F(StartUpTest, TheNamesOnADiscAreFoundInWhateverCase) {
    const std::string disc = MakeDisc("disc", "face");
    fs::rename(disc + "/Data/Recipes.ydb", disc + "/Data/RECIPES.YDB");
    fs::rename(disc + "/Data", disc + "/DATA");
    Insert('E', disc);
    ASSERT_TRUE(Start("/CD"));
    EXPECT_EQ(TitleOf(1), "Cod from face");
}

TEST_F(StartUpTest, ADiscInADriveThatIsNoCdRomIsNotFound) {
    const std::string disc = MakeDisc("disc", "face");
    Insert('E', disc, Drive::Removable);
    Insert('F', disc, Drive::Fixed);
    EXPECT_FALSE(Start("/CD"));
    ASSERT_EQ(Boxes.Shown.size(), 2U);
    EXPECT_EQ(Boxes.Shown[0].Text, DiscQuestionText);
    EXPECT_EQ(Boxes.Shown[0].Buttons, Dialogs::Buttons::OkCancel);
}

TEST_F(StartUpTest, CancelAtTheQuestionForTheDiscEndsTheProgramWithTheMessage) {
    Boxes.Then(Dialogs::Answer::Cancel);
    EXPECT_FALSE(Start("/CD"));
    ASSERT_EQ(Boxes.Shown.size(), 2U);
    EXPECT_EQ(Boxes.Shown[1].Text, NoDiscMessage);
    EXPECT_EQ(Boxes.Shown[1].Title, "Tidewell Larder");
    EXPECT_EQ(Main().ExitStatus(), 0);
    EXPECT_FALSE(Main().ui.window.Visible());
    EXPECT_FALSE(Main().files.IsOpen(filenumber::Recipes));
}

TEST_F(StartUpTest, OkAtTheQuestionForTheDiscLooksForItAgain) {
    const std::string disc = MakeDisc("disc", "face");
    Boxes.Then(Dialogs::Answer::Ok);
    Boxes.Then(Dialogs::Answer::Ok, [&] { Insert('E', disc); });
    ASSERT_TRUE(Start("/CD"));
    EXPECT_EQ(Boxes.Shown.size(), 2U);
    EXPECT_EQ(Machine.Asked, 3);
    EXPECT_EQ(TitleOf(1), "Cod from face");
}

TEST_F(StartUpTest, AStockTextThatCannotBeOpenedAtTheStartIsOpenedByTheFirstRead) {
    Book.Numbers("MY FAVORITES") = " ";
    Book.WriteTo(Folder);
    application->StartAgain(Folder.Native(), "");
    frmMain main(*application, Boxes, Machine);
    bool gone = true;
    main.files.Watch([&](const NumberedFiles::Access& access) {
        if (gone && access.Path.ends_with("\\Recipes.ydb")) {
            throw Failure(failure::PathAccess, std::string(access.Path));
        }
    });
    ASSERT_TRUE(main.Load());
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_FALSE(main.files.IsOpen(filenumber::Recipes));
    gone = false;
    EXPECT_EQ(main.store.GetRecipeTitle(1), "Cod from disk");
}

TEST_F(StartUpTest, ADiscThatComesBackAtAnotherPlaceIsFoundAgain) {
    Insert('E', MakeDisc("disc", "face"));
    ASSERT_TRUE(Start("/CD"));
    ASSERT_EQ(TitleOf(1), "Cod from face");
    Main().files.Close(filenumber::Recipes);  // as every writer does
    Folder.Rename("disc", "again");
    Machine.Now.back().MountPoint = "";
    Boxes.Then(Dialogs::Answer::Ok);
    Boxes.Then(Dialogs::Answer::Ok,
               [&] { Machine.Now.back().MountPoint = Folder.Native("again"); });
    EXPECT_EQ(TitleOf(1), "Cod from face");
    EXPECT_EQ(Boxes.Shown.size(), 2U);
    EXPECT_TRUE(Main().viewer.ShowRecipe(2));
    EXPECT_EQ(Boxes.Shown.size(), 2U);
}

TEST_F(StartUpTest, TheLetterOfADriveThatIsEmptyNowLeadsNowhere) {
    Insert('E', MakeDisc("disc", "face"));
    ASSERT_TRUE(Start("/CD"));
    ASSERT_TRUE(Main().objFSO.FileExists(Main().paths.strRecipesFile));
    Machine.Now.back().MountPoint = "";  // what was mounted there is a folder like any other
    Boxes.Then(Dialogs::Answer::Ok);
    EXPECT_TRUE(Main().AskOkCancel("The disc?"));
    EXPECT_FALSE(Main().objFSO.FileExists(Main().paths.strRecipesFile));
}

TEST_F(StartUpTest, ADataFolderThatMustNotBeWrittenIsFatalWithItsReasonWhenAnIndexIsToBeMade) {
    Book.WriteTo(Folder);
    fs::permissions(Folder.Native("Data"),
                    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    {
        const Unprivileged unprivileged;
        EXPECT_FALSE(Restart());
    }
    fs::permissions(Folder.Native("Data"), fs::perms::all);
    ExpectFatal("Custom Recipes Index.ind");
    EXPECT_NE(Boxes.Shown[0].Text.find(FailureText(failure::PathAccess)), std::string::npos)
        << Boxes.Shown[0].Text;
}

TEST_F(StartUpTest, ADataFolderThatMustNotBeWrittenOpensWhenAllItsFilesAreThere) {
    Book.AddOwn("Mine");
    Book.WriteTo(Folder);
    fs::permissions(Folder.Native("Data"),
                    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    {
        const Unprivileged unprivileged;
        EXPECT_TRUE(Restart());
        EXPECT_EQ(TitleOf(3), "Mine");
    }
    fs::permissions(Folder.Native("Data"), fs::perms::all);
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(StartUpTest, AMissingDescriptionTextIsFatalAndNamed) {
    Book.WriteTo(Folder);
    Folder.Delete("Data/CategyD.ydb");
    EXPECT_FALSE(Restart());
    ExpectFatal("CategyD.ydb");
}

TEST_F(StartUpTest, AMissingDescriptionIndexIsCreatedEmpty) {
    Book.WriteTo(Folder);
    Folder.Delete("Data/CategyD Index.ind");
    ASSERT_TRUE(Restart());
    EXPECT_TRUE(Boxes.Shown.empty());
    EXPECT_TRUE(Folder.Exists("Data/CategyD Index.ind"));
    EXPECT_EQ(Folder.Read("Data/CategyD Index.ind"), "");
}

TEST_F(StartUpTest, AMissingRecipeIndexIsCreatedEmpty) {
    Book.WriteTo(Folder);
    Folder.Delete("Data/Recipes Index.ind");
    ASSERT_TRUE(Restart());
    EXPECT_EQ(Main().store.OriginalNumRecords, 0);
    EXPECT_EQ(Folder.Read("Data/Recipes Index.ind"), "");
}

TEST_F(StartUpTest, AFatalFailureIsToldWithNoWindowBehindTheBox) {
    Book.WriteTo(Folder);
    application->StartAgain(Folder.Native(), "");
    frmMain main(*application, Boxes, Machine);
    main.files.Watch([&](const NumberedFiles::Access& access) {
        if (!access.Path.ends_with("Categories.ctg")) return;
        main.ui.window.Show();
        throw Failure(failure::DeviceError, std::string(access.Path), "Broken");
    });
    bool behindTheBox = true;
    Boxes.Then(Dialogs::Answer::Ok, [&] { behindTheBox = main.ui.window.Visible(); });
    EXPECT_FALSE(main.Load());
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_FALSE(behindTheBox);
    EXPECT_EQ(main.ExitStatus(), 1);
}

TEST_F(StartUpTest, MissingCategoriesAreFatalAndNamed) {
    Book.WriteTo(Folder);
    Folder.Delete("Data/Categories.ctg");
    EXPECT_FALSE(Restart());
    ExpectFatal("Categories.ctg");
}

TEST_F(StartUpTest, CategoriesWithoutTheRecipesWithPicturesAreFatalAndNamed) {
    Book.Categories = {{"MY FAVORITES", " 1 "}, {"ALL RECIPES", "*"}};
    EXPECT_FALSE(Start());
    ExpectFatal("Categories.ctg");
    EXPECT_NE(Boxes.Shown[0].Text.find("ALL RECIPES WITH PICTURES"), std::string::npos);
}

TEST_F(StartUpTest, AMissingDataFolderAsksForTheDisc) {
    application->StartAgain(Folder.Native(), "");
    EXPECT_FALSE(Restart());
    ASSERT_EQ(Boxes.Shown.size(), 2U);
    EXPECT_EQ(Boxes.Shown[0].Text, DiscQuestionText);
}

TEST_F(StartUpTest, ADiscWithoutADataFolderOnTheHardDiskIsFatalAndNamesAFile) {
    Insert('E', MakeDisc("disc", "face"));
    EXPECT_FALSE(Restart());
    ASSERT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_NE(Boxes.Shown[0].Text.find("\\Data\\"), std::string::npos) << Boxes.Shown[0].Text;
    EXPECT_EQ(Main().ExitStatus(), 1);
}

TEST_F(StartUpTest, AGroundThatIsMissingOrNoPictureDoesNotHinderTheStart) {
    ASSERT_TRUE(Start());
    EXPECT_TRUE(Main().ui.imgBackGroundMain.Shown().IsEmpty());
    Folder.Write("Data/RecipeView.jpg", "no picture");
    ASSERT_TRUE(Restart());
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(StartUpTest, TheGroundIsTheFileOfTheDataFolder) {
    Folder.Write("Data/RecipeView.jpg",
                 "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"8\" height=\"6\"/>");
    ASSERT_TRUE(Start());
    EXPECT_EQ(Main().ui.imgBackGroundMain.Shown().PixelWidth(), 8);
}

TEST_F(StartUpTest, AFolderThatTheCodePageCannotSpellOpens) {
    Book.WriteTo(Folder);
    Folder.MakeFolder("魚の本");
    Folder.Rename("Data", "魚の本/Data");
    application->StartAgain(Folder.Native("魚の本"), "");
    frmMain main(*application, Boxes, Machine);
    ASSERT_TRUE(main.Load());
    EXPECT_EQ(main.store.GetRecipeTitle(1), "Cod from disk");
}

TEST_F(StartUpTest, AResizeBeforeTheCategoriesAreThereDoesNothing) {
    const std::string disc = MakeDisc("disc", "face");
    std::int16_t lines = -1;
    Boxes.Then(Dialogs::Answer::Ok, [&] {
        Main().ui.window.OnResize();
        lines = Main().LinesInList[0];
        Insert('E', disc);
    });
    ASSERT_TRUE(Start("/CD"));
    EXPECT_EQ(lines, 0);
    EXPECT_GT(Main().LinesInList[0], 0);
}

TEST_F(StartUpTest, AResizeWhileTheCategoriesAreReadMovesNoControl) {
    Book.WriteTo(Folder);
    application->StartAgain(Folder.Native(), "");
    frmMain main(*application, Boxes, Machine);
    bool read = false;
    main.files.Watch([&](const NumberedFiles::Access& access) {
        if (read || access.Kind != "open" || !access.Path.ends_with("Categories.ctg")) return;
        read = true;
        main.ui.window.SetClientSize(700 * TwipsPerPixel, 500 * TwipsPerPixel);
        main.ui.window.OnResize();
        EXPECT_FLOAT_EQ(main.ui.ibReset.Width(), 150 * TwipsPerPixel);
        EXPECT_EQ(main.LinesInList[0], 0);
    });
    ASSERT_TRUE(main.Load());
    EXPECT_TRUE(read);
    EXPECT_GT(main.LinesInList[0], 0);
}

TEST_F(StartUpTest, TheDesignSizeIsThatOfTheGround) {
    ASSERT_TRUE(Start());
    EXPECT_FLOAT_EQ(Main().layout.sngDesignClientWidth, 1024 * TwipsPerPixel);
    EXPECT_FLOAT_EQ(Main().layout.sngDesignClientHeight, 720 * TwipsPerPixel);
    EXPECT_FLOAT_EQ(Main().layout.sngAspect, 720.0F / 1024.0F);
}

TEST_F(StartUpTest, AStartWritesNothingButTheMissingIndexOfOwnRecipes) {
    Book.WriteTo(Folder);
    auto before = Files();
    ASSERT_TRUE(Restart());
    before["Data/Custom Recipes Index.ind"] = "";
    EXPECT_TRUE(Files() == before);
}

TEST_F(StartUpTest, ALineForTheLogGoesNowhere) {
    ASSERT_TRUE(Start());
    const auto before = Files();
    Main().LogLine("No picture for: COD");
    EXPECT_TRUE(Files() == before);
    EXPECT_TRUE(Boxes.Shown.empty());
}

TEST_F(StartUpTest, OpeningTheFilesAgainKeepsTheStockAndReopensTheOwn) {
    Book.AddOwn("Mine");
    ASSERT_TRUE(Start());
    std::vector<std::string> opened;
    Main().files.Watch([&](const NumberedFiles::Access& access) {
        if (access.Kind == "open") opened.push_back(std::to_string(access.Number));
    });
    Main().store.OpenYDB_IND_Normal();
    EXPECT_EQ(opened, (std::vector<std::string>{"21", "22"}));
    EXPECT_EQ(TitleOf(3), "Mine");
}

}  // namespace
}  // namespace larder::test
