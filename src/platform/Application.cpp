#include "platform/Application.h"

#include <QApplication>
#include <QColor>
#include <QFont>
#include <QKeyEvent>
#include <QPalette>
#include <QString>
#include <QWidget>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "platform/Failure.h"
#include "platform/Fonts.h"
#include "platform/KeyPreview.h"
#include "platform/Native.h"
#include "platform/Text.h"

namespace larder {

namespace {

Application* theApplication = nullptr;

std::string JoinArguments(int argc, char** argv) {
    std::string joined;
    for (int i = 1; i < argc; ++i) {
        if (i > 1) joined += ' ';
        joined += FromUtf8(argv[i]);
    }
    return joined;
}

QPalette HousePalette() {
    QPalette palette(NativeColor(house::Paper));
    palette.setColor(QPalette::Window, NativeColor(house::Paper));
    palette.setColor(QPalette::Base, QColor(0xFF, 0xFC, 0xF4));
    palette.setColor(QPalette::Text, NativeColor(house::Ink));
    palette.setColor(QPalette::WindowText, NativeColor(house::Ink));
    palette.setColor(QPalette::ButtonText, NativeColor(house::Ink));
    for (const QPalette::ColorRole text :
         {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, text, NativeColor(house::PaleInk));
    }
    palette.setColor(QPalette::Highlight, NativeColor(house::SlateBlue));
    palette.setColor(QPalette::HighlightedText, NativeColor(house::Paper));
    palette.setColor(QPalette::ToolTipBase, QColor(0xFF, 0xFC, 0xF4));
    palette.setColor(QPalette::ToolTipText, NativeColor(house::Ink));
    return palette;
}

}  // namespace

class Application::Native : public QApplication {
  public:
    Native(int& argc, char** argv) : QApplication(argc, argv) {
        setApplicationName(QStringLiteral("tidewell-larder"));
        setDesktopFileName(QStringLiteral("tidewell-larder"));
        setPalette(HousePalette());
        setFont(NativeFont(Font{}));
    }

    // Every key press passes here once on its way to the control, whatever the control makes of
    // it: the one place where a window can see it first.
    bool notify(QObject* receiver, QEvent* event) override {
        KeyPreview::NoteInput(*event);
        if (event->type() == QEvent::KeyPress && receiver->isWidgetType() &&
            KeyPreview::Consumes(*static_cast<const QWidget*>(receiver),
                                 *static_cast<QKeyEvent*>(event))) {
            event->accept();
            return true;
        }
        return QApplication::notify(receiver, event);
    }
};

Application::Application(int& argc, char** argv) : commandLine_(JoinArguments(argc, argv)) {
    std::error_code error;
    currentFolder_ = std::filesystem::current_path(error).string();
    QApplication::setStyle(QStringLiteral("Fusion"));
    native_ = std::make_unique<Native>(argc, argv);
    theApplication = this;
}

Application::~Application() {
    theApplication = nullptr;
}

std::string Application::CommandLine() const {
    return commandLine_;
}

std::string Application::CurrentFolder() const {
    return currentFolder_;
}

void Application::StartAgain(const std::string& currentFolder, const std::string& commandLine) {
    currentFolder_ = currentFolder;
    commandLine_ = commandLine;
    status_.reset();
    // An exit outside of a running loop is remembered, and ends the next loop as it begins: one
    // loop is spent on it.
    QMetaObject::invokeMethod(
        native_.get(), [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
    QApplication::exec();
}

int Application::Run() {
    if (!status_) {
        const int ended = QApplication::exec();
        if (!status_) status_ = ended;
    }
    return *status_;
}

void Application::Quit(int status) {
    if (!status_) status_ = status;
    QCoreApplication::exit(*status_);
}

void Application::DoEvents() {
    QCoreApplication::processEvents();
}

void Application::Beep() {
    QApplication::beep();
}

void Application::ReportFailure(const Failure& failure) {
    if (theApplication != nullptr && theApplication->OnFailure) {
        theApplication->OnFailure(failure);
        return;
    }
    std::fprintf(stderr, "tidewell-larder: %s: failure %d: %s\n", failure.Source.c_str(),
                 failure.Number, failure.Description.c_str());
}

}  // namespace larder
