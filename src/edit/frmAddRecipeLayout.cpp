#include <algorithm>

#include "app/frmMain.h"
#include "edit/frmAddRecipe.h"

namespace larder {

namespace {

constexpr float Px = TwipsPerPixel;
constexpr float FrameHeight = 40 * Px;  // the title bar that the window manager puts on top

constexpr float Margin = 16 * Px;
constexpr float SideWidth = 208 * Px;  // the column with the picture and the large buttons
constexpr float ToolsHeight = 58 * Px;
constexpr float Wide = 42 * Px;  // a large button's height

Rectangle Inset(const Rectangle& area, float side, float top, float bottom) {
    return {area.Left + side, area.Top + top, area.Width - 2 * side, area.Height - top - bottom};
}

}  // namespace

const Rectangle frmAddRecipe::shpOrig{0, 0, 880 * Px, 644 * Px};

// The window keeps its own proportion where the screen has no room for it.
Rectangle frmAddRecipe::SizeWithin(const Rectangle& screen) {
    const float proportion = shpOrig.Width / shpOrig.Height;
    float height = shpOrig.Height + FrameHeight;
    float width = shpOrig.Width;
    if (screen.Height < height) {
        height = 0.99F * screen.Height;
        width = height * proportion;
    }
    if (screen.Width < width) {
        width = 0.99F * screen.Width;
        height = width / proportion;
    }
    return {0, 0, width, height};
}

void frmAddRecipe::FitToScreen() {
    const Rectangle size = SizeWithin(main.ui.window.WorkArea());
    window.SetClientSize(size.Width, size.Height - FrameHeight);
}

void frmAddRecipe::CenterIt() {
    const Rectangle screen = main.ui.window.WorkArea();
    window.MoveTo(screen.Left + (screen.Width - window.ClientWidth()) / 2,
                  screen.Top + (screen.Height - window.ClientHeight() - FrameHeight) / 2);
}

// The sheet takes all the room there is; tools and buttons keep their size.
void frmAddRecipe::ResizeIt() {
    const float width = window.ClientWidth();
    const float height = window.ClientHeight();
    const float top = mnuBar.RowHeight();
    const float sheetTop = top + ToolsHeight;
    mnuBar.Move({0, 0, width, top});
    imgGround.Move({0, top, width, height - top});
    PlaceTools(top);
    PlaceSheet({Margin, sheetTop, width - SideWidth - 3 * Margin, height - sheetTop - Margin});
    PlaceSide({width - SideWidth - Margin, sheetTop, SideWidth, height - sheetTop - Margin});
}

void frmAddRecipe::PlaceTools(float top) {
    constexpr float width = 40 * Px;
    constexpr float height = 36 * Px;
    constexpr float gap = 18 * Px;
    float left = Margin;
    for (ImageButton* tool : {&ibPaste, &ibBold, &ibItalic, &ibUnderline, &ibLeft, &ibCenter,
                              &ibRight, &ibSpell, &ibPrint}) {
        if (tool == &ibBold || tool == &ibLeft || tool == &ibSpell) left += gap;
        tool->Move({left, top + 12 * Px, width, height});
        left += width + 3 * Px;
    }
}

void frmAddRecipe::PlaceSheet(const Rectangle& sheet) {
    imgSheet.Move(sheet);
    const Rectangle title{sheet.Left + 36 * Px, sheet.Top + 26 * Px, sheet.Width - 72 * Px,
                          42 * Px};
    rtbTitle.Move(title);
    imgTitleRule.Move({title.Left, title.Top + title.Height + 2 * Px, title.Width, 14 * Px});
    imgTitleHide.Move({title.Left, title.Top, title.Width, title.Height + 16 * Px});
    rtbRecipe.Move(Inset(sheet, 36 * Px, 92 * Px, 28 * Px));
}

void frmAddRecipe::PlaceSide(const Rectangle& side) {
    constexpr float gap = 8 * Px;
    // In a low window the frame makes room for the four buttons.
    const float frameHeight = std::min(172 * Px, side.Height - 4 * (Wide + gap));
    const float bottom = side.Top + side.Height;
    const Rectangle frame{side.Left, side.Top, side.Width, frameHeight};
    imgFrame.Move(frame);
    shpPic = Inset(frame, 14 * Px, 14 * Px, 14 * Px);
    picture.PlacePreview();
    float top = side.Top + frameHeight + gap;
    for (ImageButton* button : {&ibAssignPicture, &ibRemovePicture}) {
        button->Move({side.Left, top, side.Width, Wide});
        top += Wide + gap;
    }
    ibCancel.Move({side.Left, bottom - Wide, side.Width, Wide});
    ibAdd.Move({side.Left, bottom - 2 * Wide - gap, side.Width, Wide});
}

}  // namespace larder
