#include "platform/Native.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QColor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QRect>
#include <QString>
#include <QTextDocument>
#include <QWidget>
#include <array>
#include <cmath>

#include "platform/Handlers.h"
#include "platform/Keys.h"
#include "platform/Text.h"

namespace larder {

QString NativeText(std::string_view text) {
    return QString::fromStdU16String(ToUtf16(text));
}

std::string ProgramText(const QString& text) {
    return FromUtf16(text.toStdU16String());
}

std::string_view Showable(std::string_view text) {
    constexpr std::size_t most = 4096;
    return text.substr(0, most);
}

QString NativeToolTip(std::string_view text) {
    const QString plain = NativeText(Showable(text));
    if (!Qt::mightBeRichText(plain)) return plain;
    return QStringLiteral("<span>") + plain.toHtmlEscaped() + QStringLiteral("</span>");
}

QColor NativeColor(std::int32_t color) {
    return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
}

int PixelOf(float twips) {
    return static_cast<int>(std::floor(twips / TwipsPerPixel + 0.5F));
}

QRect NativePlace(const Rectangle& place) {
    const int left = PixelOf(place.Left);
    const int top = PixelOf(place.Top);
    return QRect(left, top, PixelOf(place.Left + place.Width) - left,
                 PixelOf(place.Top + place.Height) - top);
}

namespace {

// The letters of an English keyboard by the code that X11 and Wayland give a key's place.
char LetterAtPlace(quint32 scanCode) {
    struct Row {
        quint32 First;
        std::string_view Letters;
    };
    static constexpr std::array<Row, 3> rows = {
        {{24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}}};
    for (const Row& row : rows) {
        if (scanCode >= row.First && scanCode < row.First + row.Letters.size()) {
            return row.Letters[scanCode - row.First];
        }
    }
    return 0;
}

int NamedKeyCode(int nativeKey) {
    switch (nativeKey) {
        case Qt::Key_Backspace:
            return 8;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return key::Tab;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return key::Enter;
        case Qt::Key_Shift:
            return 16;
        case Qt::Key_Control:
            return 17;
        case Qt::Key_Alt:
            return 18;
        case Qt::Key_Escape:
            return key::Escape;
        case Qt::Key_Space:
            return key::Space;
        case Qt::Key_PageUp:
            return key::PageUp;
        case Qt::Key_PageDown:
            return key::PageDown;
        case Qt::Key_End:
            return key::End;
        case Qt::Key_Home:
            return key::Home;
        case Qt::Key_Left:
            return key::Left;
        case Qt::Key_Up:
            return key::Up;
        case Qt::Key_Right:
            return key::Right;
        case Qt::Key_Down:
            return key::Down;
        case Qt::Key_Insert:
            return 45;
        case Qt::Key_Delete:
            return key::Delete;
        default:
            return key::None;
    }
}

}  // namespace

int KeyCodeOf(const QKeyEvent& event) {
    const int nativeKey = event.key();
    if ((nativeKey >= Qt::Key_A && nativeKey <= Qt::Key_Z) ||
        (nativeKey >= Qt::Key_0 && nativeKey <= Qt::Key_9)) {
        return nativeKey;  // Qt's codes of these are their Latin characters
    }
    if (nativeKey >= Qt::Key_F1 && nativeKey <= Qt::Key_F16) {
        return key::F1 + nativeKey - Qt::Key_F1;
    }
    const bool otherScript = nativeKey > 0xFF && nativeKey < Qt::Key_Escape;
    if (otherScript) return LetterAtPlace(event.nativeScanCode());
    return NamedKeyCode(nativeKey);
}

int ShiftOf(const QInputEvent& event) {
    int mask = 0;
    if (event.modifiers() & Qt::ShiftModifier) mask |= shift::Shift;
    if (event.modifiers() & Qt::ControlModifier) mask |= shift::Ctrl;
    if (event.modifiers() & Qt::AltModifier) mask |= shift::Alt;
    return mask;
}

int ButtonMask(int nativeButtons) {
    const Qt::MouseButtons buttons(nativeButtons);
    int mask = 0;
    if (buttons & Qt::LeftButton) mask |= mouse::LeftButton;
    if (buttons & Qt::RightButton) mask |= mouse::RightButton;
    if (buttons & Qt::MiddleButton) mask |= mouse::MiddleButton;
    return mask;
}

void FireMouse(const MouseHandler& handler, const QMouseEvent& event) {
    const bool moves = event.type() == QEvent::MouseMove;
    const QPointF place = event.position() * static_cast<qreal>(TwipsPerPixel);
    Fire(handler, ButtonMask(moves ? event.buttons().toInt() : event.button()), ShiftOf(event),
         static_cast<float>(place.x()), static_cast<float>(place.y()));
}

namespace {

constexpr char RoleProperty[] = "larderAccessibleRole";

QAccessibleInterface* WidgetWithRole(const QString&, QObject* object) {
    if (object == nullptr || !object->isWidgetType()) return nullptr;
    const QVariant role = object->property(RoleProperty);
    if (!role.isValid()) return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object),
                                 static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void SetAccessibleRole(QWidget& widget, int role) {
    static const bool installed = [] {
        QAccessible::installFactory(&WidgetWithRole);
        return true;
    }();
    Q_UNUSED(installed);
    widget.setProperty(RoleProperty, role);
}

}  // namespace larder
