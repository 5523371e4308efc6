#include "search/RecipeSearch.h"

#include <algorithm>
#include <array>
#include <limits>

#include "app/frmMain.h"
#include "platform/Text.h"
#include "search/frmSearch.h"

namespace larder {

namespace {

// A look at the event queue paints what has changed, which costs as much as hundreds of hits. So it
// is taken at a few numbers, the first of them early, and in any case after a while.
constexpr std::array<std::uint32_t, 4> Looks = {128, 512, 2048, 8192};
constexpr std::chrono::milliseconds LongestWait{15};

// A number that is pasted may bring the end of its line or cell.
std::string WithoutLineEnds(const std::string& text) {
    constexpr const char* ends = " \t\r\n";
    const std::size_t from = text.find_first_not_of(ends);
    if (from == std::string::npos) return {};
    return text.substr(from, text.find_last_not_of(ends) - from + 1);
}

}  // namespace

RecipeSearch::RecipeSearch(frmMain& hub)
    : main(hub),
      index_(hub.files, hub.paths),
      finder_(hub.store, index_, hub.VList[1], hub.intListTicket, *this) {}

RecipeSearch::~RecipeSearch() = default;

void RecipeSearch::ShowDialog() {
    Dialog().Show();
}

frmSearch& RecipeSearch::Dialog() {
    if (dialog_ == nullptr) dialog_ = std::make_unique<frmSearch>(main);
    return *dialog_;
}

void RecipeSearch::SetMousePointer(int pointer) {
    if (dialog_ != nullptr) dialog_->SetMousePointer(pointer);
}

void RecipeSearch::NameTheList() {
    main.ui.lblCategory.SetCaption("SEARCH");
    main.strLastRecipeCategory = "SEARCH";
}

void RecipeSearch::FindByWords(const std::string& text, bool onlyInList) {
    onlyInList_ = onlyInList;
    steps_ = 0;
    byNumberBefore_ = recipesByNumber_;
    lastLook_ = std::chrono::steady_clock::now();
    listIsFavorites_ = main.strLastRecipeCategory == "MY FAVORITES";
    NameTheList();
    main.recipes.DecorateWait(true, "");
    // A narrowing search keeps the earlier words highlighted.
    main.strLastSearchWords = onlyInList ? text + " " + main.strLastSearchWords : text;
    std::string strWhat = text;
    sweep_.emplace(main.files);
    finder_.FindRecipes(strWhat);
    sweep_.reset();
    main.recipes.DecorateWait(false, "");
}

void RecipeSearch::FindByNumber(const std::string& text) {
    NameTheList();
    const std::int32_t last = main.store.TotalNumRecords;
    std::int32_t number = main.viewer.CurrentRecipe();  // for a text that is no number
    const std::string typed = WithoutLineEnds(text);
    if (IsNumeric(typed)) {
        number = last == std::numeric_limits<std::int32_t>::max() ? 0 : last + 1;
        Ignoring([&] { number = ToLong(typed); });  // fails when it is too long
    }
    Ignoring([&] { main.viewer.SetCurrentRecipe(number); });
    if (number < 1 || number > last) {
        main.dialogs.MessageBox("Recipe number " + text +
                                    " does not exist.\r"
                                    "A correct number should be between 1 and " +
                                    std::to_string(last),
                                Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation,
                                "Tidewell Larder");
        return;
    }
    ++recipesByNumber_;
    main.pictureView.ShowCurRecipePicture();
}

bool RecipeSearch::OnlyInList() const {
    return onlyInList_ && main.ui.lvwX2.Tag != "*";
}

void RecipeSearch::TakeText(const std::string& rtf) {
    main.ui.rtbT.SetTextRTF(rtf);
}

bool RecipeSearch::HoldsWord(const std::string& word) {
    const bool found = main.ui.rtbT.Find(word, -1, -1, RichTextBox::WholeWord) != -1;
    if (found) main.ui.rtbT.SetSelStart(0);
    return found;
}

void RecipeSearch::LetEventsRun() {
    const auto now = std::chrono::steady_clock::now();
    const bool due = std::ranges::find(Looks, ++steps_) != Looks.end();
    if (!due && now - lastLook_ < LongestWait) return;
    lastLook_ = now;
    // A handler finds what is in the files now, and so do the titles that follow.
    sweep_.reset();
    Application::DoEvents();
    sweep_.emplace(main.files);
}

void RecipeSearch::ShowResult(bool searched, bool found) {
    sweep_.reset();
    main.recipes.SetColumnsForRecipes_X2();
    if (searched) {
        main.strSelectedKey[1] = "1";
        main.recipes.ShowRecipesIn_lvwX2("same", 1, false, true);
        // The bar of the list before may not have been among the first hits.
        if (main.lists.FocusDivertedFrom() == 2) main.lists.ReturnFocus();
        main.recipes.AskAboutPictures();
    }
    main.recipes.ReportRecipesFound("");
    // A recipe that was asked for by its number meanwhile stays on view.
    if (!found || recipesByNumber_ != byNumberBefore_) return;
    main.ui.lvwX2.Refresh();  // before the text of the first recipe is laid out
    Ignoring([this] {
        const ListItem* selected = main.ui.lvwX2.SelectedItem();
        if (selected != nullptr) main.viewer.SetCurrentRecipe(ToLong(selected->Tag));
    });
    Ignoring([this] { main.pictureView.ShowCurRecipePicture(); });
}

void RecipeSearch::ShowCancelled() {
    sweep_.reset();
    main.recipes.ShowRecipesIn_lvwX2("same", 1, false, true);
    main.recipes.ReportRecipesFound("");
}

}  // namespace larder
