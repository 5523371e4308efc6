#include "app/frmMain.h"

int main(int argc, char** argv) {
    larder::Application application(argc, argv);
    larder::SystemDialogs dialogs;
    larder::SystemDrives drives;
    larder::frmMain window(application, dialogs, drives);
    if (!window.Load()) return window.ExitStatus();
    return application.Run();
}
