#include "behaviour/support/MainWindowFixture.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWidget>

#include "app/frmMain.h"
#include "platform/Text.h"

namespace larder::test {

Application* MainWindowFixture::application = nullptr;

MainWindowFixture::MainWindowFixture() : events_(std::make_unique<QObject>()) {}

MainWindowFixture::~MainWindowFixture() {
    Close();
}

bool MainWindowFixture::Start(const std::string& commandLine) {
    Book.WriteTo(Folder);
    return Restart(commandLine);
}

bool MainWindowFixture::Restart(const std::string& commandLine) {
    Close();
    application->StartAgain(Folder.Native(), commandLine);
    main_ = std::make_unique<frmMain>(*application, Boxes, Machine);
    const bool loaded = main_->Load();
    if (loaded) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(main_->ui.window.Native()));
    }
    return loaded;
}

void MainWindowFixture::Close() {
    if (main_ == nullptr) return;
    main_.reset();
    application->StartAgain(Folder.Native(), "");  // a window that was closed has called Quit
}

ListView& MainWindowFixture::List(int index) {
    return main_->ui.lvwX(index);
}

int MainWindowFixture::Fit(int index) {
    return main_->LinesInList[static_cast<std::size_t>(index - 1)];
}

QWidget* MainWindowFixture::Widget(const std::string& name) {
    QWidget* window = main_->ui.window.Native();
    auto* widget = window->findChild<QWidget*>(QString::fromStdString(name));
    EXPECT_NE(widget, nullptr) << "no widget " << name;
    return widget == nullptr ? window : widget;
}

QWidget* MainWindowFixture::Pressed(int list) {
    return static_cast<QAbstractScrollArea*>(List(list).Native())->viewport();
}

QPoint MainWindowFixture::PointOnLine(int list, int line) {
    const float middle = (static_cast<float>(line) - 0.5F) * List(list).RowHeight();
    return {Pressed(list)->width() / 2, static_cast<int>(middle / TwipsPerPixel)};
}

void MainWindowFixture::PressLine(int list, int line, Qt::MouseButton button) {
    QTest::mouseClick(Pressed(list), button, Qt::NoModifier, PointOnLine(list, line));
}

void MainWindowFixture::Click(const std::string& name, Qt::MouseButton button) {
    QTest::mouseClick(Widget(name), button);
}

void MainWindowFixture::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QWidget* window = main_->ui.window.Native();
    QWidget* focus = window->focusWidget();
    QTest::keyClick(focus != nullptr ? focus : window, key, modifiers);
}

namespace {

void SendKey(QWidget* window, QEvent::Type type, Qt::Key key, bool repeat) {
    QWidget* focus = window->focusWidget();
    QKeyEvent event(type, key, Qt::NoModifier, QString(), repeat);
    QApplication::sendEvent(focus != nullptr ? focus : window, &event);
}

}  // namespace

void MainWindowFixture::KeyDown(Qt::Key key, bool repeat) {
    SendKey(main_->ui.window.Native(), QEvent::KeyPress, key, repeat);
}

void MainWindowFixture::KeyUp(Qt::Key key) {
    SendKey(main_->ui.window.Native(), QEvent::KeyRelease, key, false);
}

void MainWindowFixture::Wheel(int list, int notches) {
    QWidget* pressed = Pressed(list);
    const QPointF place = pressed->rect().center();
    QWheelEvent event(place, pressed->mapToGlobal(place), QPoint(), QPoint(0, -120 * notches),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(pressed, &event);
}

void MainWindowFixture::Focus(int list) {
    List(list).SetFocus();
}

std::string MainWindowFixture::FocusedName() {
    const QWidget* focus = main_->ui.window.Native()->focusWidget();
    return focus == nullptr ? std::string() : focus->objectName().toStdString();
}

void MainWindowFixture::WhenMenuPopsUp(std::function<void(QMenu&)> act) {
    auto* timer = new QTimer(events_.get());
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act = std::move(act)] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr) return;
        timer->stop();
        act(*menu);
        menu->close();
    });
    timer->start(1);
}

std::vector<std::string> MainWindowFixture::Captions(const QMenu& menu) {
    std::vector<std::string> captions;
    for (const QAction* action : menu.actions()) {
        captions.push_back(action->isSeparator() ? "-" : action->text().remove('&').toStdString());
    }
    return captions;
}

void MainWindowFixture::Choose(QMenu& menu, const std::string& objectName) {
    for (QAction* action : menu.actions()) {
        if (action->objectName().toStdString() != objectName) continue;
        const QPoint middle = menu.actionGeometry(action).center();
        QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier, middle);
        return;
    }
    ADD_FAILURE() << "no menu entry " << objectName;
}

bool MainWindowFixture::WaitUntil(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 5000);
}

void MainWindowFixture::Later(std::function<void()> act) {
    QMetaObject::invokeMethod(events_.get(), std::move(act), Qt::QueuedConnection);
}

std::vector<std::string> MainWindowFixture::Shown(int list) {
    std::vector<std::string> texts;
    for (int line = 1; line <= List(list).Count(); ++line) {
        const ListItem& item = List(list).Item(line);
        texts.push_back(list == 1 ? item.Text() : item.SubItems(2));
    }
    return texts;
}

std::vector<int> MainWindowFixture::ShownNumbers() {
    std::vector<int> numbers;
    for (int line = 1; line <= List(2).Count(); ++line) {
        numbers.push_back(ToLong(List(2).Item(line).SubItems(1)));
    }
    return numbers;
}

int MainWindowFixture::SelectedLine(int list) {
    const ListItem* selected = List(list).SelectedItem();
    return selected == nullptr ? 0 : selected->Index();
}

void MainWindowFixture::ClickCategory(const std::string& name) {
    for (int notch = 0; notch < 200; ++notch) {
        for (int line = 1; line <= List(1).Count(); ++line) {
            if (TrimBlanks(List(1).Item(line).Text()) != name) continue;
            PressLine(1, line);
            return;
        }
        const std::int32_t before = main_->VList[0].CurrentIndex;
        Wheel(1, 1);
        if (main_->VList[0].CurrentIndex == before) Main().lists.ShowListItems(1, 1, false);
    }
    ADD_FAILURE() << "no category " << name;
}

std::vector<int> Range(int first, int last) {
    std::vector<int> numbers;
    for (int i = first; i <= last; ++i)
        numbers.push_back(i);
    return numbers;
}

}  // namespace larder::test
