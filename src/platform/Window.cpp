#include "platform/Window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QEventLoop>
#include <QIcon>
#include <QKeyEvent>
#include <QPixmap>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <cmath>
#include <utility>
#include <vector>

#include "platform/Handlers.h"
#include "platform/KeyPreview.h"
#include "platform/Keys.h"
#include "platform/Native.h"
#include "platform/Painting.h"
#include "platform/Picture.h"

namespace larder {

class Window::Widget : public QWidget, public KeyPreview::Previewer {
  public:
    Widget(Window& window, QWidget* owner)
        : QWidget(owner, owner == nullptr ? Qt::Window : Qt::Dialog), window_(window) {
        setAttribute(Qt::WA_QuitOnClose, owner == nullptr);
    }

    // Windows that this one owns outlive its widget: they belong to objects of their own.
    ~Widget() override {
        for (Widget* owned : Owned())
            owned->setParent(nullptr);
    }

    bool Previews(QKeyEvent& event) override {
        int code = KeyCodeOf(event);
        if (code == key::None || !window_.OnKeyDown) return false;
        Fire(window_.OnKeyDown, code, ShiftOf(event));
        return code == key::None;
    }

    void RunModal() {
        QEventLoop loop;
        modalLoop_ = &loop;
        const QPointer<Widget> alive(this);
        setWindowModality(Qt::ApplicationModal);
        window_.Show();
        loop.exec(QEventLoop::DialogExec);
        if (alive.isNull()) return;
        modalLoop_ = nullptr;
        setWindowModality(Qt::NonModal);
    }

    // Without a window manager nobody obeys the request to maximise, so the window takes the room
    // itself; its size before comes back when it is no longer maximised.
    void Maximize() {
        if (!normalSize_.isValid()) normalSize_ = size();
        setGeometry(screen()->availableGeometry());
        setWindowState(windowState() | Qt::WindowMaximized);
    }

  protected:
    void resizeEvent(QResizeEvent*) override { Fire(window_.OnResize); }

    void paintEvent(QPaintEvent*) override {
        if (std::exchange(painted_, true)) return;
        // The paint reaches the screen when this event has been handled.
        QTimer::singleShot(0, this, [this] { Fire(window_.OnFirstPaint); });
    }

    void changeEvent(QEvent* event) override {
        QWidget::changeEvent(event);
        if (event->type() != QEvent::WindowStateChange) return;
        const auto before = static_cast<QWindowStateChangeEvent*>(event)->oldState();
        if ((before & Qt::WindowMaximized) && !isMaximized() && !isMinimized() &&
            normalSize_.isValid()) {
            const QSize normal = std::exchange(normalSize_, QSize());
            QTimer::singleShot(0, this, [this, normal] { resize(normal); });
        }
    }

    bool event(QEvent* event) override {
        if (event->type() == QEvent::WindowActivate) Fire(window_.OnActivate);
        if (event->type() == QEvent::ShortcutOverride && LooksAtAltWith(*event)) {
            event->accept();  // comes as a key, and not to a control as its access key
            return true;
        }
        return QWidget::event(event);
    }

    void closeEvent(QCloseEvent* event) override {
        if (closing_) {  // closed again by its own handlers
            event->ignore();
            return;
        }
        closing_ = true;
        const bool closes = !window_.OnQueryUnload || Fire(window_.OnQueryUnload);
        if (closes) {
            Fire(window_.OnUnload);
            for (Widget* owned : Owned())
                owned->hide();
        }
        closing_ = false;
        event->setAccepted(closes);
    }

    void hideEvent(QHideEvent* event) override {
        QWidget::hideEvent(event);
        if (!event->spontaneous() && modalLoop_ != nullptr) modalLoop_->quit();
    }

  private:
    std::vector<Widget*> Owned() const {
        std::vector<Widget*> owned;
        for (QWidget* child : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (auto* window = dynamic_cast<Widget*>(child)) owned.push_back(window);
        }
        return owned;
    }

    bool LooksAtAltWith(const QEvent& event) const {
        return window_.OnKeyDown &&
               static_cast<const QKeyEvent&>(event).modifiers() == Qt::AltModifier;
    }

    Window& window_;
    QEventLoop* modalLoop_ = nullptr;
    QSize normalSize_;
    bool painted_ = false;
    bool closing_ = false;
};

Window::Window(const std::string& name, Window* owner)
    : widget_(std::make_unique<Widget>(*this, owner == nullptr ? nullptr : owner->Native())),
      name_(name) {
    widget_->setObjectName(NativeText(name));
}

Window::~Window() {
    EmptyControls();  // their widgets go with the window's
}

void Window::SetCaption(const std::string& caption) {
    caption_ = caption;
    widget_->setWindowTitle(NativeText(caption));
}

void Window::SetIcon(const std::string& art) {
    const Picture picture = Picture::FromArt(art);
    QIcon icon;
    for (const int side : {16, 32, 64, 128}) {
        icon.addPixmap(PixmapOf(picture, QSize(side, side)));
    }
    widget_->setWindowIcon(icon);
}

Window::State Window::WindowState() const {
    if (widget_->isMinimized()) return Minimized;
    return widget_->isMaximized() ? Maximized : Normal;
}

void Window::SetWindowState(State state) {
    switch (state) {
        case Minimized:
            widget_->setWindowState(widget_->windowState() | Qt::WindowMinimized);
            break;
        case Maximized:
            widget_->setWindowState(widget_->windowState() & ~Qt::WindowMinimized);
            if (!widget_->isMaximized()) widget_->Maximize();
            break;
        case Normal:
            widget_->setWindowState(Qt::WindowNoState);
            break;
    }
}

float Window::ClientWidth() const {
    return static_cast<float>(widget_->width()) * TwipsPerPixel;
}

float Window::ClientHeight() const {
    return static_cast<float>(widget_->height()) * TwipsPerPixel;
}

void Window::SetClientSize(float width, float height) {
    widget_->resize(PixelOf(width), PixelOf(height));
}

void Window::SetMinimumClientSize(float width, float height) {
    widget_->setMinimumSize(PixelOf(width), PixelOf(height));
}

namespace {

Rectangle TwipsOf(const QRect& rect) {
    return {static_cast<float>(rect.x()) * TwipsPerPixel,
            static_cast<float>(rect.y()) * TwipsPerPixel,
            static_cast<float>(rect.width()) * TwipsPerPixel,
            static_cast<float>(rect.height()) * TwipsPerPixel};
}

}  // namespace

void Window::SetFixedSize() {
    widget_->setFixedSize(widget_->size());
}

Rectangle Window::ClientPlace() const {
    return TwipsOf({widget_->mapToGlobal(QPoint(0, 0)), widget_->size()});
}

Rectangle Window::Place() const {
    return TwipsOf(widget_->frameGeometry());
}

void Window::MoveTo(float left, float top) {
    widget_->move(PixelOf(left), PixelOf(top));
}

Rectangle Window::WorkArea() const {
    return TwipsOf(widget_->screen()->availableGeometry());
}

void Window::Show() {
    widget_->show();
    if (widget_->parentWidget() != nullptr) BringToFront();
}

void Window::ShowModal() {
    widget_->RunModal();
}

void Window::Hide() {
    widget_->hide();
}

bool Window::Visible() const {
    return !widget_->isHidden();
}

void Window::BringToFront() {
    widget_->setWindowState(widget_->windowState() & ~Qt::WindowMinimized);
    widget_->raise();
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal == widget_.get()) {
        widget_->activateWindow();
    } else {
        modal->raise();
        modal->activateWindow();
    }
}

void Window::SetTopmost() {
    if (widget_->windowFlags() & Qt::WindowStaysOnTopHint) return;
    const bool shown = !widget_->isHidden();
    widget_->setWindowFlag(Qt::WindowStaysOnTopHint);  // hides it
    if (shown) widget_->show();
}

void Window::Refresh() {
    widget_->repaint();
}

void Window::Close() {
    widget_->close();
}

Control* Window::ActiveControl() const {
    const QWidget* focus = widget_->focusWidget();
    for (Control* control : Controls()) {
        if (control->Native() == focus) return control;
    }
    return nullptr;
}

void Window::SetMousePointer(int pointer) {
    if (pointer == 11) {
        widget_->setCursor(Qt::WaitCursor);
    } else {
        widget_->unsetCursor();
    }
}

QWidget* Window::Native() const {
    return widget_.get();
}

QWidget* Window::ClientWidget() const {
    return widget_.get();
}

}  // namespace larder
