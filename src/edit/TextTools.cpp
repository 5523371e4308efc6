#include "edit/TextTools.h"

#include "app/frmMain.h"
#include "edit/frmAddRecipe.h"
#include "platform/SendKeys.h"

namespace larder {

void TextTools::Connect() {
    ConnectFormats();
    ConnectAlignment();
    ConnectClipboard();
    form_.rtbTitle.OnGotFocus = [this] { BeActive(form_.rtbTitle, form_.rtbRecipe); };
    form_.rtbRecipe.OnGotFocus = [this] { BeActive(form_.rtbRecipe, form_.rtbTitle); };
    form_.rtbTitle.OnSelChange = form_.rtbRecipe.OnSelChange = [this] { UpdateToolsBar(); };
}

void TextTools::ConnectFormats() {
    const auto connect = [this](ImageButton& button, MenuItem& entry, Get get, Set set) {
        button.OnClick = entry.OnClick = [this, get, set] { Invert(get, set); };
    };
    connect(form_.ibBold, form_.mnuBold, &RichTextBox::SelBold, &RichTextBox::SetSelBold);
    connect(form_.ibItalic, form_.mnuItalic, &RichTextBox::SelItalic, &RichTextBox::SetSelItalic);
    connect(form_.ibUnderline, form_.mnuUnderline, &RichTextBox::SelUnderline,
            &RichTextBox::SetSelUnderline);
}

void TextTools::ConnectAlignment() {
    const auto connect = [this](ImageButton& button, RichTextBox::Alignment alignment) {
        button.OnClick = [this, alignment] {
            main.SoundClick();
            form_.rtbActive->SetSelAlignment(alignment);
            UpdateToolsBar();
            Ignoring([this] { form_.rtbActive->SetFocus(); });
        };
    };
    connect(form_.ibLeft, RichTextBox::Alignment::Left);
    connect(form_.ibCenter, RichTextBox::Alignment::Center);
    connect(form_.ibRight, RichTextBox::Alignment::Right);
}

void TextTools::ConnectClipboard() {
    form_.ibPaste.OnClick = form_.mnuPaste.OnClick = [this] { Send("^{V}"); };
    form_.mnuCopy.OnClick = [this] { Send("^{C}"); };
    form_.mnuCut.OnClick = [this] { Send("^{X}"); };
}

// The box does all clipboard work itself, as if the user had typed the keys into it.
void TextTools::Send(const std::string& keys) {
    main.SoundClick();
    Ignoring([this] { form_.rtbActive->SetFocus(); });
    SendKeys(*form_.rtbActive, keys);
}

void TextTools::SelectWord(RichTextBox& rtb) {
    if (rtb.SelLength() != 0) return;
    rtb.Span(" \r", false, true);
    rtb.SetSelLength(0);
    rtb.Span(" \r", true, true);
}

void TextTools::Invert(Get get, Set set) {
    main.SoundClick();
    RichTextBox& rtb = *form_.rtbActive;
    SelectWord(rtb);
    (rtb.*set)(!(rtb.*get)().value_or(false));
    UpdateToolsBar();
}

void TextTools::UpdateToolsBar() {
    const auto latch = [](ImageButton& button, bool on) {
        button.SetButtonState(on ? ImageButton::Latched : ImageButton::Up);
    };
    const RichTextBox& rtb = *form_.rtbActive;
    latch(form_.ibBold, rtb.SelBold().value_or(false));
    latch(form_.ibItalic, rtb.SelItalic().value_or(false));
    latch(form_.ibUnderline, rtb.SelUnderline().value_or(false));
    const auto alignment = rtb.SelAlignment();
    latch(form_.ibLeft, alignment == RichTextBox::Alignment::Left);
    latch(form_.ibRight, alignment == RichTextBox::Alignment::Right);
    latch(form_.ibCenter, alignment == RichTextBox::Alignment::Center);
}

// The mark of the selection goes from the box that is left.
void TextTools::BeActive(RichTextBox& box, RichTextBox& other) {
    form_.rtbActive = &box;
    other.SetHideSelection(true);
    other.SetHideSelection(false);
    UpdateToolsBar();
}

}  // namespace larder
