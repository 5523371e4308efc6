#include "browse/ListInput.h"

#include <cmath>
#include <cstdlib>

#include "app/frmMain.h"
#include "platform/Keys.h"
#include "platform/Text.h"
#include "search/SearchText.h"

namespace larder {

namespace {

// Shift, Ctrl and Alt by themselves are no step and no repeat of one.
bool IsModifier(int KeyCode) {
    return KeyCode >= 16 && KeyCode <= 18;
}

bool IsStep(int KeyCode) {
    return KeyCode >= key::PageUp && KeyCode <= key::Down;
}

}  // namespace

void ListInput::Connect() {
    for (const std::int16_t Index : {std::int16_t{1}, std::int16_t{2}}) {
        ListView& list = main.ui.lvwX(Index);
        list.OnMouseDown = [this, Index](int Button, int, float, float Y) {
            MouseDown(Index, Button, Y);
        };
        list.OnMouseMove = [this, Index](int, int, float, float Y) { MouseMove(Index, Y); };
        list.OnKeyDown = [this, Index](int& KeyCode, int) { KeyDown(Index, KeyCode); };
        list.OnKeyUp = [this](int, int) { intKeyRepeat = 0; };
        list.OnGotFocus = [this, Index] { main.lists.HighlightSelected(Index, true); };
        // The release of a key that is held now goes to another control.
        list.OnLostFocus = [this] { intKeyRepeat = 0; };
        list.OnWheel = [this, Index](int lines) { Wheel(Index, lines); };
    }
    // Every step up at the edge of a window starts it. A tick that finds nothing held is the last.
    main.ui.tmrScrolls.OnTimer = [this] { main.ui.tmrScrolls.SetEnabled(false); };
    main.ui.chkFocusCatcher.OnLostFocus = [this] { main.lists.ForgetDiversion(); };
}

int ListInput::LineAt(std::int16_t Index, float Y) const {
    const int rowHeight = MaxOf(static_cast<int>(main.ui.lvwX(Index).RowHeight()), 1);
    return Y < 0 ? 0 : static_cast<int>(Y) / rowHeight + 1;
}

void ListInput::MouseDown(std::int16_t Index, int Button, float Y) {
    ListView& list = main.ui.lvwX(Index);
    const int line = LineAt(Index, Y);
    if (line < 1 || line > MinOf<int>(list.Count(), main.LinesInList[Index - 1U])) return;
    // Set by a press on a line alone, for only the click on a line clears it.
    booRightClick = Button == mouse::RightButton;
    main.SoundClick();
    main.ui.tmrScrolls.SetEnabled(false);
    list.SetHideSelection(false);
    if (Index == 1) {
        main.categories.CategoryItemClick(list.Item(line), false);
    } else {
        main.viewer.RecipeItemClick(list.Item(line), false);
    }
    // While the list filled, the wheel may have carried the bar away: another entry is on its line.
    if (!list.HideSelection()) main.lists.RememberSelectedKey(Index);
}

void ListInput::MouseMove(std::int16_t Index, float Y) {
    ListView& list = main.ui.lvwX(Index);
    const int line = LineAt(Index, Y);
    std::string text;
    if (line >= 1 && line <= list.Count()) {
        const ListItem& item = list.Item(line);
        text = TrimBlanks(Index == 1 ? item.Text() : item.SubItems(2));
    }
    list.SetToolTipText(text);
}

void ListInput::KeyDown(std::int16_t Index, int& KeyCode) {
    if (IsModifier(KeyCode)) return;
    if (intKeyRepeat == 1) {
        intKeyRepeat = 0;
        KeyCode = key::None;
        return;
    }
    Act(Index, KeyCode);
    intKeyRepeat = 1;  // behind the step, in which the list may lose the focus for a moment
    main.lists.RememberSelectedKey(Index);
    KeyCode = key::None;
}

bool ListInput::TakeDivertedKey(int KeyCode) {
    const std::int16_t Index = main.lists.FocusDivertedFrom();
    if (Index == 0 || !IsStep(KeyCode)) return false;
    main.lists.ReturnFocus();
    if (main.ui.lvwX(Index).HasFocus()) KeyDown(Index, KeyCode);
    return true;
}

void ListInput::Act(std::int16_t Index, int KeyCode) {
    switch (KeyCode) {
        case key::Down:
            main.steps.SelectNext(Index);
            break;
        case key::Up:
            main.steps.SelectPrevious(Index);
            break;
        case key::PageDown:
            main.steps.FlipDown(Index, true);
            break;
        case key::PageUp:
            main.steps.FlipUp(Index, true);
            break;
        case key::Home:
            main.steps.GoHome(Index);
            break;
        case key::End:
            main.steps.GoEnd(Index);
            break;
        default:
            break;
    }
}

void ListInput::Wheel(std::int16_t Index, int lines) {
    // The wheel turns the list under the mouse, which need not be the one with the focus.
    const bool itsFocus = main.ui.lvwX(Index).HasFocus() || main.lists.FocusDivertedFrom() == Index;
    for (int i = 0; i < std::abs(lines); ++i) {
        if (lines > 0) {
            main.steps.ScrollListDown(Index);
        } else {
            main.steps.ScrollListUp(Index);
        }
    }
    if (itsFocus) main.lists.RestoreLvwFocus(Index);
}

}  // namespace larder
