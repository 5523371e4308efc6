#include "browse/ListSteps.h"

#include "app/frmMain.h"
#include "platform/Text.h"
#include "search/SearchText.h"

namespace larder {

namespace {

std::size_t Element(std::int16_t Index) {
    return static_cast<std::size_t>(Index - 1);
}

}  // namespace

void ListSteps::SelectNext(std::int16_t Index) {
    const int i = main.lists.SelectedLine(Index);
    if (i + 1 <= main.LinesInList[Element(Index)]) {
        // On the last line of a list shorter than the window there is no next line.
        Ignoring([&] {
            main.lists.SelectLine(Index, i + 1);
            main.lists.RefreshListItem(Index, static_cast<std::int16_t>(i));
        });
        return;
    }
    ForgetSelection(Index);
    ScrollToNext(Index);
    SelectAndFocus(Index, main.ui.lvwX(Index).Count());
}

void ListSteps::SelectPrevious(std::int16_t Index) {
    const int i = main.lists.SelectedLine(Index);
    if (i - 1 > 0) {
        Ignoring([&] {
            main.lists.SelectLine(Index, i - 1);
            main.lists.RefreshListItem(Index, static_cast<std::int16_t>(i));
        });
        return;
    }
    ForgetSelection(Index);
    ScrollToPrevious(Index);
    SelectAndFocus(Index, 1);
}

void ListSteps::ScrollListUp(std::int16_t Index) {
    ScrollUpTo(Index, main.VList[Element(Index)].CurrentIndex - 1);
}

void ListSteps::ScrollListDown(std::int16_t Index) {
    ScrollDownTo(Index, main.VList[Element(Index)].CurrentIndex + 1);
}

void ListSteps::FlipDown(std::int16_t Index, bool Keyboard) {
    const VirtualList& list = main.VList[Element(Index)];
    const std::int32_t lines = main.LinesInList[Element(Index)];
    int s = 0;
    if (Keyboard) {
        s = MaxOf(main.lists.SelectedLine(Index), 1);
        if (list.CurrentIndex + lines + s - 1 > list.Count()) s = main.ui.lvwX(Index).Count();
        ForgetSelection(Index);
    }
    const std::int32_t stood = list.CurrentIndex;
    ScrollDownTo(Index, stood + lines);
    if (!Keyboard) return;
    const int count = main.ui.lvwX(Index).Count();
    if (s > count || list.Count() <= lines || list.CurrentIndex == stood) s = count;
    SelectAndFocus(Index, s);
}

void ListSteps::FlipUp(std::int16_t Index, bool Keyboard) {
    const VirtualList& list = main.VList[Element(Index)];
    const std::int32_t lines = main.LinesInList[Element(Index)];
    int s = 0;
    if (Keyboard) {
        s = MaxOf(main.lists.SelectedLine(Index), 1);
        if (list.CurrentIndex - lines + s - 1 < 1) s = 1;
        ForgetSelection(Index);
    }
    main.lists.ShowListItems(Index, MaxOf(list.CurrentIndex - lines, 1), false);
    if (Keyboard) SelectAndFocus(Index, s);
}

void ListSteps::GoHome(std::int16_t Index) {
    JumpTo(Index, 1, false);
}

void ListSteps::GoEnd(std::int16_t Index) {
    JumpTo(Index, main.lists.LastStart(Index), true);
}

void ListSteps::ShowWindowBefore(std::int32_t place) {
    const std::int32_t first = RecipeBefore(place) - main.LinesInList[Element(2)] + 1;
    main.lists.ShowListItems(2, MaxOf(first, 1), false);
}

void ListSteps::ScrollUpTo(std::int16_t Index, std::int32_t start) {
    main.lists.ShowListItems(Index, MaxOf(start, 1), false);
    main.ui.tmrScrolls.SetEnabled(true);
}

void ListSteps::ScrollDownTo(std::int16_t Index, std::int32_t start) {
    const ListView& lines = main.ui.lvwX(Index);
    const std::int32_t stood = main.VList[Element(Index)].CurrentIndex;
    const bool empty = lines.Count() == 0;
    main.lists.ShowListItems(Index, MinOf(start, main.lists.LastStart(Index)), false);
    // Behind the last recipe of a stock that was cut short the places are blank to the end.
    if (!empty && lines.Count() == 0) main.lists.ShowListItems(Index, stood, false);
}

void ListSteps::ScrollToNext(std::int16_t Index) {
    const VirtualList& list = main.VList[Element(Index)];
    if (main.ui.lvwX(Index).Count() == 0) return;
    if (!list.VirtualMode) {
        ScrollListDown(Index);
        return;
    }
    const std::int32_t stood = list.CurrentIndex;
    const WindowEnds before = EndsOfWindow();
    // Every start up to the first recipe shows the same recipes as now.
    ScrollDownTo(Index, before.First + 1);
    if (EndsOfWindow().Last == before.Last) main.lists.ShowListItems(Index, stood, false);
}

void ListSteps::ScrollToPrevious(std::int16_t Index) {
    const VirtualList& list = main.VList[Element(Index)];
    if (!list.VirtualMode) {
        ScrollListUp(Index);
        return;
    }
    const std::int32_t recipe = RecipeBefore(list.CurrentIndex);
    if (recipe > 0) ScrollUpTo(Index, recipe);
}

ListSteps::WindowEnds ListSteps::EndsOfWindow() const {
    WindowEnds ends;
    const ListView& lines = main.ui.lvwX2;
    // All lines are looked at, because the user may have sorted them.
    for (int i = 1; i <= lines.Count(); ++i) {
        const std::int32_t number = ToLong(lines.Item(i).Tag);
        if (i == 1 || number < ends.First) ends.First = number;
        if (number > ends.Last) ends.Last = number;
    }
    return ends;
}

std::int32_t ListSteps::RecipeBefore(std::int32_t place) const {
    std::int32_t number = place - 1;
    while (number > 0 && main.store.LookUpTitle(number).Is == TitleIs::Gone)
        --number;
    return MaxOf(number, 0);
}

void ListSteps::ForgetSelection(std::int16_t Index) {
    main.strSelectedKey[Element(Index)] = "0";
}

void ListSteps::SelectAndFocus(std::int16_t Index, int line) {
    Ignoring([&] { main.ui.lvwX(Index).Item(line).SetSelected(); });
    main.ui.lvwX(Index).SetHideSelection(false);
    Ignoring([&] { main.ui.lvwX(Index).SetFocus(); });
    main.lists.RememberSelectedKey(Index);
}

void ListSteps::JumpTo(std::int16_t Index, std::int32_t start, bool toLastLine) {
    ForgetSelection(Index);
    const ListView& lines = main.ui.lvwX(Index);
    const VirtualList& list = main.VList[Element(Index)];
    if (list.CurrentIndex != start) main.lists.ShowListItems(Index, start, false);
    if (toLastLine && lines.Count() == 0 && list.VirtualMode) ShowWindowBefore(start);
    const int line = toLastLine ? lines.Count() : 1;
    SelectAndFocus(Index, line);
    main.lists.RefreshListItem(Index, static_cast<std::int16_t>(line));
}

}  // namespace larder
