#include "layout/WindowLayout.h"

#include "app/frmMain.h"
#include "search/SearchText.h"

namespace larder {

WindowLayout::WindowLayout(frmMain& hub) : main(hub) {
    tmrRefill_.OnTimer = [this] {
        tmrRefill_.SetEnabled(false);
        RefillLists();
    };
}

void WindowLayout::InitResize() {
    const Rectangle& ground = main.ui.imgBackGroundMain.Place();
    sngAspect = ground.Height / ground.Width;
    sngDesignClientWidth = ground.Width;
    sngDesignClientHeight = ground.Height;
    main.ui.window.SetMinimumClientSize(sngDesignClientWidth / 2, sngDesignClientHeight / 2);
    for (const Control* control : main.ui.window.Controls()) {
        const Rectangle& place = control->Place();
        PossitionItem record;
        record.Top = place.Top;
        record.Left = place.Left;
        record.Height = place.Height;
        record.Width = place.Width;
        record.Name = control->Name();
        colDesignRects.push_back(record);
    }
}

void WindowLayout::ResizeIt() {
    if (main.ui.window.WindowState() == Window::Minimized) return;
    xRatio_ = sngDesignClientWidth / MaxOf(main.ui.window.ClientWidth(), 1.0F);
    yRatio_ = sngDesignClientHeight / MaxOf(main.ui.window.ClientHeight(), 1.0F);
    Control* focused = main.ui.window.ActiveControl();
    main.fonts.DoFontSizes(1 / yRatio_);
    MoveControls();
    CountLines();
    RefillLists();
    if (focused != nullptr) Ignoring([&] { focused->SetFocus(); });
}

void WindowLayout::MoveControls() {
    const std::vector<Control*>& controls = main.ui.window.Controls();
    for (std::size_t i = 0; i < controls.size() && i < colDesignRects.size(); ++i) {
        if (controls[i] == &main.ui.imgPicture) continue;  // has its place within its frame
        const PossitionItem& design = colDesignRects[i];
        controls[i]->Move(Scaled({design.Left, design.Top, design.Width, design.Height}));
    }
    main.ui.lvwX1.SetColumnWidth(1, main.ui.lvwX1.Width());
    if (main.recipes.booRecipeColumns) main.recipes.SetColumnsForRecipes_X2();
    PlaceRtbRes();
    main.pictureView.UpdatePicture(0, true);
}

void WindowLayout::CountLines() {
    for (const std::int16_t index : {std::int16_t{1}, std::int16_t{2}}) {
        const ListView& list = main.ui.lvwX(index);
        const auto lines = static_cast<std::int16_t>(list.Height() / MaxOf(list.RowHeight(), 1.0F));
        main.LinesInList[index - 1U] = MaxOf<std::int16_t>(lines, 1);
    }
}

void WindowLayout::RefillLists() {
    booRefillPutOff_ = main.QuestionUp();
    if (booRefillPutOff_) return;
    for (const std::int16_t index : {std::int16_t{1}, std::int16_t{2}}) {
        main.lists.Refill(index);
    }
}

// Not at once: the read that has asked is still under way, and may ask again.
void WindowLayout::RefillPutOff() {
    if (booRefillPutOff_ && !main.QuestionUp()) tmrRefill_.SetEnabled(true);
}

void WindowLayout::PlaceRtbRes() {
    RichTextBox& rtb = main.ui.rtbSee;
    rtb.Move(Scaled(MainControls::Shape1));
}

void WindowLayout::HideRTB(RichTextBox& rtb) {
    rtb.SetLeft(main.ui.window.WorkArea().Width * 2);
}

Rectangle WindowLayout::Scaled(const Rectangle& design) const {
    return {design.Left / xRatio_, design.Top / yRatio_, design.Width / xRatio_,
            design.Height / yRatio_};
}

}  // namespace larder
