#pragma once

#include <memory>

namespace larder {

class frmMain;
class frmProgress;

// The small dialogs.
class EditDialogs {
  public:
    explicit EditDialogs(frmMain& hub);
    ~EditDialogs();

    // The progress dialog, made at the first call and hidden until ShowIt.
    frmProgress& Progress();

  private:
    frmMain& main;
    std::unique_ptr<frmProgress> progress_;
};

}  // namespace larder
