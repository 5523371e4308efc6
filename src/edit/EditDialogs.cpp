#include "edit/EditDialogs.h"

#include "app/frmMain.h"
#include "edit/frmAddChoice.h"
#include "edit/frmProgress.h"

namespace larder {

EditDialogs::EditDialogs(frmMain& hub) : main(hub) {}

EditDialogs::~EditDialogs() = default;

void EditDialogs::ShowAddChoice() {
    if (main.editor.Busy()) return;  // the save, which lets events run, would wait under the dialog
    std::function<void()> chosen;
    {
        frmAddChoice dialog(main);
        chosen = dialog.Ask();
    }
    if (!chosen) return;
    try {
        chosen();
    } catch (const Failure& failure) {
        main.dialogs.MessageBox(failure.Description, Dialogs::Buttons::Ok, Dialogs::Icon::Critical,
                                "Tidewell Larder");
    }
}

frmProgress& EditDialogs::Progress() {
    if (progress_ == nullptr) progress_ = std::make_unique<frmProgress>(main);
    return *progress_;
}

}  // namespace larder
