#include <exception>
#include <utility>

#include "app/frmMain.h"
#include "browse/RecipeList.h"
#include "search/SearchText.h"

namespace larder {

namespace {

constexpr std::int32_t StockNumberColor = 0;
constexpr std::int32_t CustomNumberColor = 0x800000;  // navy
constexpr std::int32_t PictureTitleColor = 0xFF0000;  // blue

bool BuiltByOthers(const std::string& strNumbers) {
    return strNumbers == "VIDEO" || strNumbers == "KNOTS" || strNumbers == "TIPS";
}

}  // namespace

// One call of the fill.
struct RecipeList::Fill {
    std::string strNumbers;
    std::int32_t startPos = 0;
    bool ForceReload = false;
    bool newList = false;   // this call made the list anew
    std::string tagBefore;  // what the control showed when the call came in
};

// What a fill has taken off the screen comes back with its end, be that an exception, which ends
// the growth of the list and the busy look too. A fill whose list is somebody else's leaves the
// screen to him.
class RecipeList::Curtain {
  public:
    explicit Curtain(frmMain& hub) : main(hub) {}
    ~Curtain() {
        if (handedOver_) return;
        if (std::uncaught_exceptions() > exceptions_) {
            main.VList[1].booSearching = false;
            main.ui.window.SetMousePointer(0);
            main.search.SetMousePointer(0);
        }
        main.lists.ShowList(2);
    }
    Curtain(const Curtain&) = delete;
    Curtain& operator=(const Curtain&) = delete;

    void HandOver() { handedOver_ = true; }

  private:
    frmMain& main;
    int exceptions_ = std::uncaught_exceptions();
    bool handedOver_ = false;
};

bool RecipeList::ShowRecipesIn_lvwX2(std::string strNumbers, std::int32_t startPos,
                                     bool /*Reserved*/, bool ForceReload) {
    Fill fill{std::move(strNumbers), startPos, ForceReload, false, main.ui.lvwX2.Tag};
    NormaliseStart(fill);
    RecogniseSame(fill);
    const std::int32_t lastStart = main.lists.LastStart(2);
    if (fill.startPos > lastStart) fill.startPos = lastStart;
    if (fill.startPos < 1) fill.startPos = 1;
    if (NothingToDo(fill)) return true;
    Curtain curtain(main);
    const RecipeStore::OneDiscQuestion asksOnce(main.store);
    Prepare(fill);
    bool ended = true;
    if (fill.strNumbers == "*" || main.VList[1].VirtualMode) {
        Ignoring([&] { FillVirtual(fill); });
        if (fill.newList) DecorateWait(false, "");
    } else {
        Ignoring([&] { ended = FillFromNumbers(fill); });
    }
    if (ended) {
        Finish(fill);
    } else {
        curtain.HandOver();
    }
    return ended;
}

void RecipeList::NormaliseStart(Fill& fill) {
    VirtualList& list = main.VList[1];
    if (fill.startPos == 0) {
        if (list.CurrentIndex == 0) list.CurrentIndex = 1;
        fill.startPos = list.CurrentIndex;
    } else if (fill.startPos == -2) {
        fill.startPos = list.CurrentIndex;
    } else if (fill.startPos < 1) {
        list.CurrentIndex = 1;
    }
}

void RecipeList::RecogniseSame(Fill& fill) {
    // Somebody else has emptied the list meanwhile: what was shown before is not there any more.
    if (fill.strNumbers != "same" && main.VList[1].Generation() != lastGeneration_) {
        strLastNumbers.clear();
        if (fill.strNumbers.empty()) return;
    }
    if (fill.strNumbers != strLastNumbers) {
        strLastNumbers = fill.strNumbers;
    } else {
        fill.strNumbers = "same";
    }
}

bool RecipeList::NothingToDo(const Fill& fill) const {
    const VirtualList& list = main.VList[1];
    return !fill.ForceReload && fill.strNumbers == "same" && fill.startPos == list.CurrentIndex &&
           main.ui.lvwX2.Count() > 0 && main.strSelectedKey[1] == strLastSelectedKey &&
           !list.booSearching && intLastLines == main.LinesInList[1];
}

void RecipeList::Prepare(Fill& fill) {
    VirtualList& list = main.VList[1];
    main.ui.lvwX2.SetVisible(false);
    list.CurrentIndex = fill.startPos;
    strLastSelectedKey = main.strSelectedKey[1];
    intLastLines = main.LinesInList[1];
    intLinesShown = main.LinesInList[1];
    main.ui.lvwX2.Tag = " ";
    if (fill.strNumbers != "*" && fill.strNumbers != "same") list.VirtualMode = false;
}

void RecipeList::FillVirtual(Fill& fill) {
    VirtualList& list = main.VList[1];
    if (fill.strNumbers != "same") {
        list.ClearAll();
        list.SetCount(main.store.TotalRecipes());
        DecorateWait(true, "");  // a length ends the busy look, yet no line is written
        list.CurrentIndex = fill.startPos;
        lastGeneration_ = list.Generation();
        fill.newList = true;
    }
    main.ui.lvwX2.Tag = "*";
    main.lists.EnsureLinesAvailable(2);
    const int lines = main.ui.lvwX2.Count();
    const std::int32_t last = main.store.TotalNumRecords;
    std::int32_t number = 0;
    std::int32_t n = 1;  // runs on across the lines, so that a deleted recipe leaves no gap
    for (int i = 1; i <= lines; ++i) {
        FoundTitle title;
        while (title.Is == TitleIs::Gone && number < last) {
            number = fill.startPos + n - 1;
            title = main.store.LookUpTitle(number);
            ++n;
        }
        if (title.Is == TitleIs::Gone) {
            while (main.ui.lvwX2.Count() >= i)
                main.ui.lvwX2.Remove(main.ui.lvwX2.Count());
            return;
        }
        const std::string text = std::to_string(number);
        WriteLine(i, number, title.Text, main.pictures.HasPicture(text) ? 2 : 0,
                  main.ui.lvwX2.ForeColor(), "k" + text, text);
    }
}

bool RecipeList::FillFromNumbers(Fill& fill) {
    VirtualList& list = main.VList[1];
    if (fill.strNumbers != "same" && !BuiltByOthers(fill.strNumbers) && !ReadNumbers(fill)) {
        return false;
    }
    // Before its first screenful a growing list is off the screen and stays there.
    const bool underWay = list.booSearching && fill.tagBefore == " ";
    if (underWay && !fill.ForceReload) return false;
    main.ui.lvwX2.Tag = list.NumsToString();
    main.lists.EnsureLinesAvailable(2);
    for (int i = 1; i <= main.ui.lvwX2.Count(); ++i) {
        const VirtualListItem* entry = list.Peek(fill.startPos + i - 1);
        if (entry == nullptr) continue;
        WriteLine(i, entry->Num, entry->Text, entry->Icon, TitleColor(*entry), entry->Key,
                  entry->Tag);
    }
    list.CurrentIndex = fill.startPos;
    return true;
}

bool RecipeList::ReadNumbers(Fill& fill) {
    VirtualList& list = main.VList[1];
    fill.newList = true;
    const std::uint32_t own = list.Generation() + 1;  // when StringToNums has emptied it
    if (!list.StringToNums(fill.strNumbers)) {
        // Nobody has emptied it since: it was cancelled and is left to nobody.
        if (list.Generation() == own && list.booSearching) StopGrowing();
        return false;
    }
    lastGeneration_ = list.Generation();
    // The user may have scrolled while the list grew.
    fill.startPos = MaxOf(list.CurrentIndex, 1);
    return true;
}

void RecipeList::StopGrowing() {
    main.VList[1].booSearching = false;
    ShowRecipesIn_lvwX2("same", 0, false, true);
    DecorateWait(false, "");
}

std::int32_t RecipeList::TitleColor(const VirtualListItem& entry) const {
    return entry.Bold ? PictureTitleColor : main.ui.lvwX2.ForeColor();
}

void RecipeList::WriteLine(int line, std::int32_t number, const std::string& title, int icon,
                           std::int32_t titleColor, const std::string& key,
                           const std::string& tag) {
    ListItem& item = main.ui.lvwX2.Item(line);
    Ignoring([&] { item.SetKey(key); });
    item.Tag = tag;
    item.SetSmallIcon(icon);
    item.SetSubItems(1, std::to_string(number));
    item.SetSubItems(2, title);
    item.SetSubForeColor(
        1, number > main.store.OriginalNumRecords ? CustomNumberColor : StockNumberColor);
    item.SetSubForeColor(2, titleColor);
}

void RecipeList::Finish(const Fill& fill) {
    if (fill.newList) Ignoring([this] { AskAboutPictures(); });
    Ignoring([this] { main.lists.HighlightSelected(2, false); });
    const bool dragging = !main.ui.imgGarlic2.Tag.empty() || !main.ui.lblScroll2.Tag.empty();
    if (dragging) main.lists.RefreshLvwX(2);
}

void RecipeList::AskAboutPictures() {
    if (main.VList[1].Count() != 0 || main.ui.chkJustWithPictures.Value() == 0) return;
    const auto answer = main.dialogs.MessageBox(
        "No recipes with pictures found in this set.\n"
        "Do you want to see the recipes without pictures?",
        Dialogs::Buttons::YesNo, Dialogs::Icon::Question, "The Galley Almanac");
    if (answer == Dialogs::Answer::Yes) main.ui.chkJustWithPictures.SetValue(0);
}

}  // namespace larder
