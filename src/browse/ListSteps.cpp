#include "browse/ListSteps.h"

#include "app/frmMain.h"
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
    ScrollToAnother(
        Index, [&] { ScrollListDown(Index); },
        [](const ListView& list) { return list.Item(list.Count()).Key(); });
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
    ScrollToAnother(
        Index, [&] { ScrollListUp(Index); },
        [](const ListView& list) { return list.Item(1).Key(); });
    SelectAndFocus(Index, 1);
}

void ListSteps::ScrollListUp(std::int16_t Index) {
    const std::int32_t start = main.VList[Element(Index)].CurrentIndex - 1;
    main.lists.ShowListItems(Index, MaxOf(start, 1), false);
    main.ui.tmrScrolls.SetEnabled(true);
}

void ListSteps::ScrollListDown(std::int16_t Index) {
    const std::int32_t start = main.VList[Element(Index)].CurrentIndex + 1;
    main.lists.ShowListItems(Index, MinOf(start, main.lists.LastStart(Index)), false);
}

void ListSteps::FlipDown(std::int16_t Index, bool Keyboard) {
    const VirtualList& list = main.VList[Element(Index)];
    const std::int32_t lines = main.LinesInList[Element(Index)];
    int s = 0;
    if (Keyboard) {
        s = main.lists.SelectedLine(Index);
        if (list.CurrentIndex + lines + s - 1 > list.Count()) s = main.ui.lvwX(Index).Count();
        ForgetSelection(Index);
    }
    const std::int32_t start = MinOf(list.CurrentIndex + lines, main.lists.LastStart(Index));
    main.lists.ShowListItems(Index, start, false);
    if (!Keyboard) return;
    const int count = main.ui.lvwX(Index).Count();
    if (s > count || list.Count() <= lines) s = count;
    SelectAndFocus(Index, s);
}

void ListSteps::FlipUp(std::int16_t Index, bool Keyboard) {
    const VirtualList& list = main.VList[Element(Index)];
    const std::int32_t lines = main.LinesInList[Element(Index)];
    int s = 0;
    if (Keyboard) {
        s = main.lists.SelectedLine(Index);
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

template <typename Scroll, typename EdgeKey>
void ListSteps::ScrollToAnother(std::int16_t Index, Scroll scroll, EdgeKey edgeKey) {
    const ListView& lines = main.ui.lvwX(Index);
    const VirtualList& list = main.VList[Element(Index)];
    if (lines.Count() == 0) return;
    const std::string before = edgeKey(lines);
    std::int32_t stood = 0;
    do {
        stood = list.CurrentIndex;
        scroll();
    } while (list.CurrentIndex != stood && lines.Count() > 0 && edgeKey(lines) == before);
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
    if (main.VList[Element(Index)].CurrentIndex != start) {
        main.lists.ShowListItems(Index, start, false);
    }
    ListView& list = main.ui.lvwX(Index);
    const int line = toLastLine ? list.Count() : 1;
    Ignoring([&] { list.Item(line).SetSelected(); });
    list.SetHideSelection(false);
    main.lists.RefreshListItem(Index, static_cast<std::int16_t>(line));
    Ignoring([&] { list.SetFocus(); });
    main.lists.RememberSelectedKey(Index);
}

}  // namespace larder
