#include "platform/CommonDialog.h"

#include "platform/Dialogs.h"
#include "platform/Failure.h"
#include "platform/Paths.h"

namespace larder {

void CommonDialog::ShowOpen() {
    const auto chosen = dialogs_.OpenFile({Filter, paths_.Native(FileName)});
    if (chosen) {
        FileName = paths_.Alias(*chosen);
    } else if (CancelError) {
        throw Failure(failure::DialogCancelled, "CommonDialog.ShowOpen");
    }
}

}  // namespace larder
