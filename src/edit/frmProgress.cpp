#include "edit/frmProgress.h"

#include "app/frmMain.h"
#include "layout/Util.h"
#include "platform/Pixels.h"

namespace larder {

namespace {

constexpr std::int32_t Ink = 0x20232B;  // #2B2320
constexpr std::int16_t Full = 100;

constexpr Rectangle Ground = Pixels(0, 0, 440, 130);

}  // namespace

frmProgress::frmProgress(frmMain& hub) : window("frmProgress", &hub.ui.window) {
    window.SetClientSize(Ground.Width, Ground.Height);
    window.SetFixedSize();
    imgGround.Move(Ground);
    imgGround.SetPicture(Picture::FromArt("progress-dialog"));
    lblDone.Move(Pixels(30, 28, 380, 30));
    lblDone.SetFont({Font::Family::Serif, 15.0F, true, false});
    lblDone.SetForeColor(Ink);
    lblDone.SetAlignment(Label::Alignment::Center);
    ProgressBar1.Move(Pixels(34, 68, 372, 26));
    ProgressBar1.SetAccessibleName("Done");
    window.OnActivate = [this] { window.Refresh(); };
}

// A task whose dialog was closed may have gone on and left its percentage.
void frmProgress::Load() {
    lblDone.SetCaption("0%");
    ProgressBar1.SetValue(0);
    CenterIt();
    window.Refresh();
}

void frmProgress::ShowIt(const std::string& strDescription) {
    if (!window.Visible()) Load();
    window.SetTopmost();
    window.Show();
    SetDescription(strDescription);
}

void frmProgress::SetDescription(const std::string& description) {
    description_ = description;
    window.SetCaption(description + "...");
    window.Refresh();
}

std::int16_t frmProgress::Value() const {
    return static_cast<std::int16_t>(ProgressBar1.Value());
}

void frmProgress::SetValue(std::int16_t percent) {
    if (percent == Value()) return;
    lblDone.SetCaption(std::to_string(percent) + "%");
    window.SetCaption(description_ + " ... " + lblDone.Caption() + " done.");
    window.Refresh();
    ProgressBar1.SetValue(percent);
    if (percent > Full) Done();
}

void frmProgress::Done() {
    SetValue(Full);
    window.Close();
}

void frmProgress::CenterIt() {
    CenterInWorkArea(window);
}

}  // namespace larder
