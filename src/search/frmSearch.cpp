#include "search/frmSearch.h"

#include <array>
#include <cmath>

#include "app/frmMain.h"
#include "platform/Keys.h"
#include "platform/Pixels.h"
#include "platform/Text.h"
#include "search/SearchText.h"

namespace larder {

namespace {

constexpr std::int32_t Ink = 0x20232B;  // #2B2320

constexpr Rectangle Ground = Pixels(0, 0, 480, 260);

struct Placed {
    Control& control;
    Rectangle place;
    const char* accessibleName;
};

}  // namespace

frmSearch::frmSearch(frmMain& hub) : window("frmSearch", &hub.ui.window), main(hub) {
    window.SetCaption("Find Recipes");
    window.SetClientSize(Ground.Width, Ground.Height);
    window.SetFixedSize();
    PlaceControls();
    DressControls();
    Connect();
    for (RichTextBox* box : {&rtbSearch1, &rtbSearch2})
        box->SetTransparent(true);
    rtbSearch1.SetSelAlignment(RichTextBox::Alignment::Left);
    rtbSearch2.SetSelAlignment(RichTextBox::Alignment::Right);
    WordMode();
    CenterIt();
}

void frmSearch::PlaceControls() {
    const std::array<Placed, 14> table{{
        {imgGround, Ground, ""},
        {Line1, Pixels(30, 58, 420, 2), ""},
        {Line2, Pixels(64, 178, 386, 2), ""},
        {linOnly, Pixels(30, 160, 420, 2), ""},
        {lblPrompt1, Pixels(30, 63, 420, 20), ""},
        {lblPrompt2, Pixels(30, 63, 420, 20), ""},
        {rtbSearch1, Pixels(34, 89, 412, 30), "Words"},
        {rtbSearch2, Pixels(34, 89, 412, 30), "Number"},
        {chkOnly, Pixels(30, 133, 18, 18), "Only search recipes in the Choices box"},
        {lblChkBox, Pixels(52, 132, 398, 20), ""},
        {ibByWord, Pixels(28, 20, 113, 34), "By words"},
        {ibByNum, Pixels(147, 20, 113, 34), "By number"},
        {ibFind, Pixels(246, 196, 100, 40), "Find"},
        {ibCancel, Pixels(352, 196, 100, 40), "Cancel"},
    }};
    for (const Placed& row : table) {
        row.control.Move(row.place);
        row.control.SetAccessibleName(row.accessibleName);
    }
}

void frmSearch::DressControls() {
    imgGround.SetPicture(Picture::FromArt("find-dialog"));
    for (Image* rule : {&Line1, &Line2, &linOnly})
        rule->SetPicture(Picture::FromArt("rule"));
    lblPrompt1.SetCaption("Enter the words that you are looking for:");
    lblPrompt2.SetCaption("Enter the number of the recipe:");
    chkOnly.SetCaption("&Only search recipes in the Choices box");
    lblChkBox.SetCaption("Only search recipes in the Fish Recipes box");
    for (Label* label : {&lblPrompt1, &lblPrompt2, &lblChkBox}) {
        label->SetFont({Font::Family::Sans, 10.0F, false, false});
        label->SetForeColor(Ink);
    }
    const auto dress = [](ImageButton& button, const std::string& art) {
        ImageButton::Design design;
        design.Image = Picture::FromArt("buttons/" + art);
        design.ImagePressed = Picture::FromArt("buttons/" + art + "-pressed");
        button.SetDesign(design);
    };
    dress(ibByWord, "by-word");
    dress(ibByNum, "by-num");
    dress(ibFind, "dialog-find");
    dress(ibCancel, "dialog-cancel");
}

void frmSearch::Connect() {
    window.OnKeyDown = [this](int& KeyCode, int Shift) { KeyDown(KeyCode, Shift); };
    window.OnActivate = [this] { FocusBox(); };
    window.OnQueryUnload = [this] {
        CloseDialog();
        return false;
    };
    ibByWord.OnClick = [this] {
        main.SoundClick();
        WordMode();
    };
    ibByNum.OnClick = [this] {
        main.SoundClick();
        NumberMode();
    };
    ibFind.OnClick = [this] { cmdFind_ClickX(); };
    ibCancel.OnClick = [this] {
        main.SoundClick();
        CloseDialog();
    };
    lblChkBox.OnClick = [this] {
        main.SoundClick();
        ToggleOnly();
    };
    rtbSearch1.OnLostFocus = [this] { StripFormats(rtbSearch1, RichTextBox::Alignment::Left); };
    rtbSearch2.OnLostFocus = [this] { StripFormats(rtbSearch2, RichTextBox::Alignment::Right); };
}

void frmSearch::KeyDown(int& KeyCode, int Shift) {
    const bool own = (Shift & shift::Alt) != 0 ? ActWithAlt(KeyCode) : Act(KeyCode, Shift);
    if (own) KeyCode = key::None;
}

bool frmSearch::Act(int KeyCode, int Shift) {
    switch (KeyCode) {
        case key::Enter:
            cmdFind_ClickX();
            return true;
        case key::Escape:
            CloseDialog();
            return true;
        case key::Tab:
            return LeaveBox((Shift & shift::Shift) != 0);
        default:
            return false;
    }
}

bool frmSearch::ActWithAlt(int KeyCode) {
    switch (KeyCode) {
        case key::W:
            WordMode();
            return true;
        case key::N:
            NumberMode();
            return true;
        case key::F:
            ibFind.OnClick();
            return true;
        case key::O:
            ToggleOnly();
            Ignoring([this] { chkOnly.SetFocus(); });
            return true;
        default:
            return false;
    }
}

// A box would take the key as text.
bool frmSearch::LeaveBox(bool backward) {
    if (!rtbSearch1.HasFocus() && !rtbSearch2.HasFocus()) return false;
    if (backward) {
        ibByNum.SetFocus();
    } else if (chkOnly.Visible()) {
        chkOnly.SetFocus();
    } else {
        ibFind.SetFocus();
    }
    return true;
}

void frmSearch::ToggleOnly() {
    chkOnly.SetValue(chkOnly.Value() == 1 ? 0 : 1);
}

void frmSearch::WordMode() {
    ShowMode(true);
}

void frmSearch::NumberMode() {
    ShowMode(false);
}

void frmSearch::ShowMode(bool words) {
    ibByWord.SetButtonState(words ? ImageButton::Latched : ImageButton::Up);
    ibByNum.SetButtonState(words ? ImageButton::Up : ImageButton::Latched);
    for (Control* control : {static_cast<Control*>(&rtbSearch1), static_cast<Control*>(&lblPrompt1),
                             static_cast<Control*>(&chkOnly), static_cast<Control*>(&lblChkBox),
                             static_cast<Control*>(&linOnly)}) {
        control->SetVisible(words);
    }
    rtbSearch2.SetVisible(!words);
    lblPrompt2.SetVisible(!words);
    FocusBox();
}

void frmSearch::FocusBox() {
    Ignoring([this] { (rtbSearch1.Visible() ? rtbSearch1 : rtbSearch2).SetFocus(); });
}

void frmSearch::CenterIt() {
    const Rectangle list = main.ui.lvwX1.Place();
    const auto distance = static_cast<float>(RoundToLong(list.Height / 9));
    const Rectangle origin = main.ui.window.ClientPlace();
    const Rectangle screen = main.ui.window.WorkArea();
    const float width = Ground.Width;
    const float height = Ground.Height + 40 * TwipsPerPixel;  // with the frame's title bar
    const float left = origin.Left + list.Left + distance;
    const float top = origin.Top + list.Top + distance;
    window.MoveTo(MaxOf(MinOf(left, screen.Left + screen.Width - width), screen.Left),
                  MaxOf(MinOf(top, screen.Top + screen.Height - height), screen.Top));
}

void frmSearch::Show() {
    window.Show();
}

void frmSearch::CloseDialog() {
    // A growing list is not this dialog's; a search that reads recipes stops at the next one.
    if (!main.VList[1].booSearching) main.intListTicket.Cancel();
    window.Hide();
}

void frmSearch::StripFormats(RichTextBox& box, RichTextBox::Alignment alignment) {
    const std::string text = box.Text();
    box.SetTextRTF("");
    box.SetText(text);
    box.SetSelAlignment(alignment);
}

void frmSearch::cmdFind_ClickX() {
    main.SoundClick();
    if (rtbSearch1.Visible()) {
        FindWords();
    } else {
        FindNumber();
    }
}

void frmSearch::FindWords() {
    const std::string text = rtbSearch1.Text();
    if (text.empty()) return;
    main.search.FindByWords(text, chkOnly.Value() == 1);
}

void frmSearch::FindNumber() {
    const std::string text = rtbSearch2.Text();
    if (text.empty()) return;
    main.search.FindByNumber(text);
}

}  // namespace larder
