#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <cstring>
#include <iostream>

#include "app/frmMain.h"

// Starts the cook-book of the current folder, or with --empty a bare Qt window, and writes a line
// to its output when the first paint has reached the screen; then stays open until it is ended.
// What starts it measures the time between.
namespace {

class EmptyWindow : public QWidget {
  protected:
    void paintEvent(QPaintEvent*) override {
        if (told_) return;
        told_ = true;
        QTimer::singleShot(0, this, [] { std::cout << "painted" << std::endl; });
    }

  private:
    bool told_ = false;
};

int RunEmpty(int argc, char** argv) {
    const QApplication application(argc, argv);
    EmptyWindow window;
    window.showMaximized();
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], "--empty") == 0) return RunEmpty(argc, argv);
    larder::Application application(argc, argv);
    larder::SystemDialogs dialogs;
    larder::SystemDrives drives;
    larder::frmMain window(application, dialogs, drives);
    if (!window.Load()) return window.ExitStatus();
    window.ui.window.OnFirstPaint = [] { std::cout << "painted" << std::endl; };
    return application.Run();
}
