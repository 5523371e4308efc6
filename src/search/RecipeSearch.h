#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/NumberedFiles.h"
#include "search/RecipeFinder.h"
#include "search/WordIndex.h"

namespace larder {

class frmMain;
class frmSearch;

// The search as the window sees it: the find dialog, made at its first use, and what a find does
// to the list, the labels and the current recipe.
class RecipeSearch final : private FindSurroundings {
  public:
    explicit RecipeSearch(frmMain& hub);
    ~RecipeSearch() override;

    void ShowDialog();
    // The dialog, made at the first call.
    frmSearch& Dialog();
    // The hourglass (11) or the usual pointer (0) on the dialog, if there is one.
    void SetMousePointer(int pointer);

    // A find by words as the user typed them, in the whole book or only in the list on show.
    void FindByWords(const std::string& text, bool onlyInList);
    // A find by number. A number that no recipe has is told in a message. The list, be it complete
    // or still growing, goes its way.
    void FindByNumber(const std::string& text);
    // How many recipes were shown by FindByNumber: who fills the list while events run tells by
    // this whether its first recipe is still the one to be shown.
    std::uint32_t RecipesByNumber() const { return recipesByNumber_; }

  private:
    bool OnlyInList() const override;
    bool ListIsFavorites() const override { return listIsFavorites_; }
    void HideGuideArt() override {}
    void TakeText(const std::string& rtf) override;
    bool HoldsWord(const std::string& word) override;
    void LetEventsRun() override;
    void ShowResult(bool searched, bool found) override;
    void ShowCancelled() override;
    void NameTheList();

    frmMain& main;
    WordIndex index_;
    RecipeFinder finder_;
    std::unique_ptr<frmSearch> dialog_;
    bool onlyInList_ = false;
    bool listIsFavorites_ = false;               // when Find was pressed
    std::optional<NumberedFiles::Sweep> sweep_;  // over the recipes, between looks at events
    std::uint32_t steps_ = 0;                    // numbers looked at by this search
    std::uint32_t recipesByNumber_ = 0;
    std::uint32_t byNumberBefore_ = 0;                // when this search began
    std::chrono::steady_clock::time_point lastLook_;  // at the event queue
};

}  // namespace larder
