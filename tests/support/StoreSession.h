#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "platform/Failure.h"
#include "platform/NumberedFiles.h"
#include "platform/Paths.h"
#include "store/DataPaths.h"
#include "store/RecipeStore.h"
#include "store/RecipeUpdater.h"
#include "store/RecipeWriter.h"
#include "support/ScriptedDisc.h"
#include "support/StoredRecipes.h"

namespace larder::test {

// One run of the program on a data folder, without a window: from Start to its end.
class StoreSession : private UpdateSurroundings {
  public:
    explicit StoreSession(const std::filesystem::path& dataFolder) {
        const std::string root = NamePaths.Alias(dataFolder.string()) + "\\";
        Paths.Assign(root, root);
    }

    void Start() {
        Writer.Journal.SettleLastRun();
        Store.OpenYDB_IND_Normal();
        Store.RecalculateTotalRecipes();
    }

    bool Add(const std::string& title, const std::string& rtf) {
        return Writer.AddRecipeTo_YDB_IND(title, rtf, 21, 22);
    }
    bool Update(std::int32_t number, const std::string& title, const std::string& rtf) {
        return Updater.UpdateRecipe(number, rtf, title);
    }

    larder::Paths NamePaths;
    DataPaths Paths;
    NumberedFiles Files{NamePaths};
    ScriptedDisc Disc;
    RecipeStore Store{Files, Paths, Disc};
    std::vector<std::string> Messages;  // critical ones
    RecipeWriter Writer{Files, Paths, Store,
                        [this](const std::string& text) { Messages.push_back(text); }};
    RecipeUpdater Updater{Files, Paths, Store, Writer, *this};

    bool Edit = false;                // "/E"
    std::vector<std::string> Told;    // to the maintainer
    std::vector<std::string> Titles;  // shown in the list, "5 Title"
    bool TitlesFail = false;
    int HourglassesShown = 0;
    bool HourglassNow = false;
    int MessagesUnderHourglass = 0;

  private:
    bool EditMode() const override { return Edit; }
    void ShowError(const std::string& text) override {
        Messages.push_back(text);
        if (HourglassNow) ++MessagesUnderHourglass;
    }
    void TellMaintainer(const std::string& text) override { Told.push_back(text); }
    void SetHourglass(bool on) override {
        HourglassesShown += on && !HourglassNow ? 1 : 0;
        HourglassNow = on;
    }
    void ShowNewTitle(std::int32_t RecipeNum, const std::string& strTitleTXT) override {
        Titles.push_back(std::to_string(RecipeNum) + " " + strTitleTXT);
        if (TitlesFail) throw Failure(failure::InvalidArgument, "list");
    }
};

// What a start makes of each of these folders, each outcome once. A window, whose start costs a
// hundred times as much, need then start on those alone.
inline std::set<FolderBytes> AfterAStart(const std::set<FolderBytes>& folders,
                                         const std::filesystem::path& scratch) {
    std::set<FolderBytes> outcomes;
    for (const FolderBytes& files : folders) {
        PutBytes(scratch, files);
        StoreSession(scratch).Start();
        outcomes.insert(BytesOf(scratch));
    }
    return outcomes;
}

}  // namespace larder::test
