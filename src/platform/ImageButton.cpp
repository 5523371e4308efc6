#include "platform/ImageButton.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCursor>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QShortcut>
#include <QWidget>
#include <utility>

#include "platform/ButtonPress.h"
#include "platform/Fonts.h"
#include "platform/Handlers.h"
#include "platform/Keys.h"
#include "platform/Native.h"
#include "platform/Painting.h"

namespace larder {

// While a press is held with the mouse off the button, the button looks up again.
class ImageButton::Widget : public QWidget {
  public:
    Widget(QWidget* parent, ImageButton& button) : QWidget(parent), button_(button) {
        setFocusPolicy(Qt::StrongFocus);
        setCursor(Qt::PointingHandCursor);
        setAttribute(Qt::WA_Hover);
        connect(&accessKey_, &QShortcut::activated, this, [this] { PressAndRelease(); });
    }

    // A whole press at once, as assistive technology and Enter make it.
    void PressAndRelease() {
        if (!press_.BeginByProgram()) return;
        const QPointer<Widget> alive(this);
        Fire(button_.OnMouseDown, mouse::LeftButton, 0, CentreX(), CentreY());
        if (!alive.isNull() && press_.EndByProgram()) EndPressAndClick();
    }

    void SetAccessKey(const QString& caption) {
        accessKey_.setKey(QKeySequence::mnemonic(caption));
    }

    void TellState() {
        update();
        if (!QAccessible::isActive()) return;
        QAccessible::State changed;
        changed.pressed = true;
        changed.disabled = true;
        QAccessibleStateChangeEvent event(this, changed);
        QAccessible::updateAccessibility(&event);
    }

    const ImageButton& Button() const { return button_; }

  protected:
    void paintEvent(QPaintEvent*) override;

    void mousePressEvent(QMouseEvent* event) override {
        if (!press_.BeginByMouse(*event)) return;
        SetPressed(true);
        FireMouse(button_.OnMouseDown, *event);
    }
    // A second quick press is a press like the first.
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }

    void mouseMoveEvent(QMouseEvent* event) override {
        if (press_.IsHeldByMouse()) SetPressed(IsOver(*event));
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        if (!press_.EndByMouse(*event)) return;
        const bool clicks = event->button() == Qt::LeftButton && IsOver(*event);
        SetPressed(false);
        const QPointer<Widget> alive(this);
        FireMouse(button_.OnMouseUp, *event);
        if (clicks && !alive.isNull()) Fire(button_.OnClick);
    }

    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

    void focusInEvent(QFocusEvent* event) override {
        if (event->reason() != Qt::ActiveWindowFocusReason &&
            event->reason() != Qt::PopupFocusReason) {
            ring_ = event->reason() != Qt::MouseFocusReason;
        }
        update();
    }
    void focusOutEvent(QFocusEvent*) override { update(); }

  private:
    float CentreX() const { return button_.Width() / 2; }
    float CentreY() const { return button_.Height() / 2; }
    bool IsOver(const QMouseEvent& event) const {
        return rect().contains(event.position().toPoint());
    }

    void SetPressed(bool pressed) {
        button_.pressed_ = pressed;
        update();
    }

    // The press has ended without a release of the mouse.
    void EndPress(int button) {
        SetPressed(false);
        Fire(button_.OnMouseUp, button, 0, CentreX(), CentreY());
    }

    void EndPressAndClick() {
        const QPointer<Widget> alive(this);
        EndPress(mouse::LeftButton);
        if (!alive.isNull()) Fire(button_.OnClick);
    }

    ImageButton& button_;
    QShortcut accessKey_{this};
    ButtonPress press_{this, [this](int button) { EndPress(button); }};
    bool ring_ = false;  // the focus came by the keyboard or by program
};

void ImageButton::Widget::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat()) PressAndRelease();
        return;
    }
    if (event->key() == Qt::Key_Escape && press_.IsHeldBySpace()) {
        press_.Abandon();
        return;
    }
    if (event->key() != Qt::Key_Space) {
        event->ignore();
        return;
    }
    if (event->isAutoRepeat() || !press_.BeginBySpace()) return;
    SetPressed(true);
    Fire(button_.OnMouseDown, mouse::LeftButton, ShiftOf(*event), CentreX(), CentreY());
}

void ImageButton::Widget::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space) {
        event->ignore();
        return;
    }
    if (!event->isAutoRepeat() && press_.EndBySpace()) EndPressAndClick();
}

void ImageButton::Widget::paintEvent(QPaintEvent*) {
    const Design& design = button_.design_;
    const Look look = button_.CurrentLook();
    const Picture& picture = look == Look::Disabled ? design.ImageDisabled
                             : look == Look::Pressed && !design.ImagePressed.IsEmpty()
                                 ? design.ImagePressed
                                 : design.Image;
    QPainter painter(this);
    if (!design.Transparent) painter.fillRect(rect(), palette().color(QPalette::Button));
    PaintPicture(painter, picture, rect());
    if (look == Look::Normal && button_.state_ != Disabled && underMouse()) {
        // A little more light, and only where the picture is.
        painter.setOpacity(0.10);
        painter.setCompositionMode(QPainter::CompositionMode_Plus);
        PaintPicture(painter, picture, rect());
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setOpacity(1.0);
    }
    if (look == Look::Disabled) painter.setOpacity(0.8);  // pales the caption
    if (!design.Caption.empty()) {
        painter.setFont(NativeFont(design.CaptionFont));
        painter.setPen(NativeColor(design.ForColor));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic,
                         NativeText(design.Caption));
    }
    if (ring_ && hasFocus()) PaintFocusRing(painter, rect());
}

// What a screen reader sees of a button: its name, whether it is latched or dimmed, and a press.
class ImageButton::Accessible : public QAccessibleWidget {
  public:
    explicit Accessible(Widget& widget)
        : QAccessibleWidget(&widget, QAccessible::PushButton), widget_(widget) {}

    static QAccessibleInterface* Make(const QString&, QObject* object) {
        auto* button = dynamic_cast<Widget*>(object);
        return button == nullptr ? nullptr : new Accessible(*button);
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.pressed = widget_.Button().CurrentLook() == Look::Pressed;
        if (widget_.Button().ButtonState() == Disabled) state.disabled = true;
        return state;
    }

    QStringList actionNames() const override {
        const QStringList names = QAccessibleWidget::actionNames();
        return widget_.isEnabled() ? QStringList{pressAction()} + names : names;
    }

    void doAction(const QString& name) override {
        if (name != pressAction()) return QAccessibleWidget::doAction(name);
        if (widget_.isEnabled()) widget_.PressAndRelease();
    }

    QStringList keyBindingsForAction(const QString& name) const override {
        if (name == pressAction()) return {QStringLiteral("Space")};
        return QAccessibleWidget::keyBindingsForAction(name);
    }

  private:
    Widget& widget_;
};

ImageButton::ImageButton(Container& container, const std::string& name)
    : ImageButton(container, name, Design{}) {}

ImageButton::ImageButton(Container& container, const std::string& name, Design design)
    : Control(container, name, 0, new Widget(ParentFor(container), *this)) {
    static const bool installed = [] {
        QAccessible::installFactory(&Accessible::Make);
        return true;
    }();
    Q_UNUSED(installed);
    SetDesign(std::move(design));
}

ImageButton::Widget* ImageButton::Mine() const {
    return static_cast<Widget*>(Native());
}

void ImageButton::SetDesign(Design design) {
    design_ = std::move(design);
    if (design_.Transparent) {
        design_.Image = WithoutGround(design_.Image);
        design_.ImagePressed = WithoutGround(design_.ImagePressed);
        design_.ImageDisabled = WithoutGround(design_.ImageDisabled);
    }
    TellCaption();
}

void ImageButton::SetButtonState(std::int32_t state) {
    if (state == state_) return;
    state_ = state;
    TellFocusPolicy();
    Mine()->TellState();
}

void ImageButton::SetCaption(const std::string& caption) {
    design_.Caption = caption;
    TellCaption();
}

void ImageButton::TellCaption() {
    Mine()->SetAccessKey(NativeText(design_.Caption));
    std::string name = design_.Caption;
    std::erase(name, '&');
    SetShownName(name);
    Mine()->update();
}

void ImageButton::SetFocusOnClick(bool takes) {
    focusOnClick_ = takes;
    TellFocusPolicy();
}

// A button that has the focus keeps it: the user goes on from there.
void ImageButton::TellFocusPolicy() {
    int policy = Qt::NoFocus;
    if (state_ != Disabled) policy |= Qt::TabFocus;
    if (focusOnClick_) policy |= Qt::ClickFocus;
    Mine()->setFocusPolicy(static_cast<Qt::FocusPolicy>(policy));
}

ImageButton::Look ImageButton::CurrentLook() const {
    if (state_ == Disabled) return design_.ImageDisabled.IsEmpty() ? Look::Normal : Look::Disabled;
    return pressed_ || state_ == Latched ? Look::Pressed : Look::Normal;
}

}  // namespace larder
