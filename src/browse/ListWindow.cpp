#include "browse/ListWindow.h"

#include <algorithm>
#include <optional>

#include "app/frmMain.h"
#include "platform/Text.h"
#include "search/SearchText.h"

namespace larder {

namespace {

// The line number that a remembered key stands for; nothing when it is the key of a line.
std::optional<std::int32_t> AsLineNumber(const std::string& key) {
    std::optional<std::int32_t> number;
    Ignoring([&] { number = ToLong(key); });
    return number;
}

}  // namespace

void ListWindow::ShowListItems(std::int16_t Index, std::int32_t startPos, bool ForceReload) {
    if (Index == 1) main.categories.ShowItemsInLvw1(startPos, ForceReload);
    if (Index == 2) main.recipes.ShowRecipesIn_lvwX2("same", startPos, false, ForceReload);
}

void ListWindow::Refill(std::int16_t Index) {
    keptOff_ = main.ui.lvwX(Index).Visible() ? std::int16_t{0} : Index;
    Ignoring([&] { ShowListItems(Index, 0, true); });
    keptOff_ = 0;
}

void ListWindow::ShowList(std::int16_t Index) {
    if (Index != keptOff_) main.ui.lvwX(Index).SetVisible(true);
}

std::int32_t ListWindow::LastStart(std::int16_t Index) const {
    const auto i = static_cast<std::size_t>(Index - 1);
    return MaxOf(main.VList[i].Count() - main.LinesInList[i] + 1, 1);
}

void ListWindow::EnsureLinesAvailable(std::int16_t Index) {
    ListView& list = main.ui.lvwX(Index);
    const auto i = static_cast<std::size_t>(Index - 1);
    const std::int32_t n = MinOf<std::int32_t>(main.VList[i].Count(), main.LinesInList[i]);
    while (list.Count() > n)
        list.Remove(list.Count());
    while (list.Count() < n)
        list.Add();
    for (int line = 1; line <= list.Count(); ++line)
        list.Item(line).SetKey("");
}

void ListWindow::HighlightSelected(std::int16_t lvw_Index, bool ForceScroll) {
    ListView& list = main.ui.lvwX(lvw_Index);
    std::string& remembered = main.strSelectedKey[static_cast<std::size_t>(lvw_Index - 1)];
    const int noted = SelectedLine(lvw_Index);
    if (remembered.empty()) {
        Ignoring([&] { SelectLine(lvw_Index, 1); });
        return;
    }
    const std::optional<std::int32_t> number = AsLineNumber(remembered);
    ListItem* line = nullptr;
    if (!number) {
        line = LineWithKey(lvw_Index, remembered);
    } else if (*number >= 1 && *number <= list.Count()) {
        line = &list.Item(*number);
    }
    if (line == nullptr) {
        if (!ForceScroll) {
            DivertFocusFrom(lvw_Index);
        } else if (!number) {
            // A number is a line of the window and stands for no place in the list.
            const std::int32_t position = PositionOfKey(lvw_Index, remembered);
            if (position > 0) ShowListItems(lvw_Index, position, false);
        }
        return;
    }
    list.SetHideSelection(false);
    line->SetSelected();
    if (line->Index() != noted) {
        RefreshListItem(lvw_Index, static_cast<std::int16_t>(line->Index()));
    }
    remembered = line->Key();
}

void ListWindow::RefreshListItem(std::int16_t lvw_Index, std::int16_t ListItemIndex) {
    ListView& list = main.ui.lvwX(lvw_Index);
    if (!list.Visible()) return;
    if (ListItemIndex == 0) ListItemIndex = static_cast<std::int16_t>(SelectedLine(lvw_Index));
    if (ListItemIndex >= 1 && ListItemIndex <= list.Count()) list.Refresh();
}

void ListWindow::RefreshLvwX(std::int16_t Index) {
    main.ui.imgWaterMark(Index).Refresh();
}

void ListWindow::DivertFocusFrom(std::int16_t Index) {
    main.ui.lvwX(Index).SetHideSelection(true);
    // A list that is hidden for its fill has laid the focus aside, and would take it up again.
    const bool itsFocus =
        main.ui.lvwX(Index).HasFocus() || main.ui.window.ActiveControl() == nullptr;
    if (!itsFocus) return;
    Ignoring([&] {
        main.ui.chkFocusCatcher.SetFocus();
        divertedFrom_ = Index;
    });
}

std::int16_t ListWindow::FocusDivertedFrom() const {
    return main.ui.chkFocusCatcher.HasFocus() ? divertedFrom_ : std::int16_t{0};
}

void ListWindow::ReturnFocus() {
    const std::int16_t Index = FocusDivertedFrom();
    if (Index == 0) return;
    Ignoring([&] { main.ui.lvwX(Index).SetFocus(); });
    // Bringing the line into the window may have taken the focus away once more.
    RestoreLvwFocus(Index);
}

void ListWindow::RestoreLvwFocus(std::int16_t Index) {
    if (Index > 2 || main.ui.lvwX(Index).HideSelection()) return;
    Ignoring([&] { main.ui.lvwX(Index).SetFocus(); });
}

void ListWindow::SelectLine(std::int16_t Index, int line) {
    main.ui.lvwX(Index).Item(line).SetSelected();
    RememberSelectedKey(Index);
}

void ListWindow::RememberSelectedKey(std::int16_t Index) {
    const ListItem* selected = main.ui.lvwX(Index).SelectedItem();
    if (selected != nullptr) {
        main.strSelectedKey[static_cast<std::size_t>(Index - 1)] = selected->Key();
    }
}

ListItem* ListWindow::LineWithKey(std::int16_t Index, const std::string& key) const {
    ListView& list = main.ui.lvwX(Index);
    const std::string_view sought = TrimBlanks(key);
    for (int line = 1; line <= list.Count(); ++line) {
        ListItem& item = list.Item(line);
        if (EqualNoCase(TrimBlanks(item.Key()), sought)) return &item;
    }
    return nullptr;
}

int ListWindow::SelectedLine(std::int16_t Index) const {
    const ListItem* selected = main.ui.lvwX(Index).SelectedItem();
    return selected == nullptr ? 0 : selected->Index();
}

std::int32_t ListWindow::PositionOfKey(std::int16_t Index, const std::string& key) const {
    const VirtualList& list = main.VList[static_cast<std::size_t>(Index - 1)];
    if (list.VirtualMode) {
        // Without items, a recipe's place is its number, which the key spells behind the "k".
        std::int32_t position = 0;
        Ignoring([&] { position = ToLong(key.substr(1)); });
        return position;
    }
    const VirtualListItem* entry = list.PeekKey(std::string(TrimBlanks(key)));
    return entry == nullptr ? 0 : entry->Index;
}

}  // namespace larder
