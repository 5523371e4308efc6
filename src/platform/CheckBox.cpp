#include "platform/CheckBox.h"

#include <QAccessible>
#include <QCheckBox>
#include <QKeyEvent>

#include "platform/Fonts.h"
#include "platform/Handlers.h"
#include "platform/Native.h"

namespace larder {

class CheckBox::Widget : public QCheckBox {
  public:
    using QCheckBox::QCheckBox;

    void BecomeCatcher() {
        catcher_ = true;
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::ClickFocus);
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        if (!catcher_) QCheckBox::paintEvent(event);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (catcher_) {
            event->ignore();
        } else {
            QCheckBox::keyPressEvent(event);
        }
    }

  private:
    bool catcher_ = false;
};

CheckBox::CheckBox(Container& container, const std::string& name)
    : Control(container, name, 0, new Widget(ParentFor(container))) {
    QObject::connect(Mine(), &QCheckBox::clicked, Mine(), [this] { Fire(OnClick); });
}

CheckBox::Widget* CheckBox::Mine() const {
    return static_cast<Widget*>(Native());
}

void CheckBox::SetCaption(const std::string& caption) {
    Mine()->setText(NativeText(caption));
}

int CheckBox::Value() const {
    return Mine()->isChecked() ? 1 : 0;
}

void CheckBox::SetValue(int value) {
    Mine()->setChecked(value != 0);
}

void CheckBox::MakeFocusCatcher() {
    Mine()->BecomeCatcher();
    // A screen reader must not offer to tick it.
    SetAccessibleRole(*Mine(), QAccessible::Pane);
}

void CheckBox::SetFont(const Font& font) {
    Mine()->setFont(NativeFont(font));
}

}  // namespace larder
