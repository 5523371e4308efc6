#include "platform/Menu.h"

#include <QAction>
#include <QCursor>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QPalette>
#include <QString>
#include <QWidget>

#include "platform/Handlers.h"
#include "platform/KeyPreview.h"
#include "platform/Native.h"
#include "platform/Window.h"

namespace larder {

namespace {

QPoint PopupPlace(const QWidget& window) {
    const QWidget* focus = window.focusWidget();
    if (!KeyPreview::LastInputWasKey() || focus == nullptr) return QCursor::pos();
    return focus->mapToGlobal(focus->rect().center());
}

}  // namespace

void PopupMenu::Popup(Window& owner) {
    QMenu menu(owner.Native());
    menu.setObjectName(NativeText(name_));
    menu.setSeparatorsCollapsible(true);
    for (MenuItem* item : items_) {
        if (!item->Visible) continue;
        QAction* action =
            item->Caption == "-" ? menu.addSeparator() : menu.addAction(NativeText(item->Caption));
        action->setObjectName(NativeText(item->Name));
        action->setEnabled(item->Enabled);
        action->setData(QVariant::fromValue(static_cast<void*>(item)));
    }
    const QAction* chosen = menu.exec(PopupPlace(*owner.Native()));
    if (chosen == nullptr) return;
    Fire(static_cast<MenuItem*>(chosen->data().value<void*>())->OnClick);
}

class MenuBar::Widget : public QMenuBar {
  public:
    explicit Widget(QWidget* parent) : QMenuBar(parent) {
        setNativeMenuBar(false);
        setAutoFillBackground(true);
        QPalette colors = palette();
        for (const QPalette::ColorRole ground : {QPalette::Window, QPalette::Button}) {
            colors.setColor(ground, NativeColor(house::Paper));
        }
        for (const QPalette::ColorRole text : {QPalette::WindowText, QPalette::ButtonText}) {
            colors.setColor(QPalette::Active, text, NativeColor(house::Ink));
            colors.setColor(QPalette::Inactive, text, NativeColor(house::Ink));
        }
        setPalette(colors);
    }
};

MenuBar::MenuBar(Window& window, const std::string& name)
    : Control(window, name, 0, new Widget(ParentFor(window))) {}

MenuBar::Widget* MenuBar::Mine() const {
    return static_cast<Widget*>(Native());
}

void MenuBar::Add(const std::string& name, const std::string& caption,
                  const std::vector<MenuItem*>& items) {
    QMenu* menu = Mine()->addMenu(NativeText(caption));
    menu->setObjectName(NativeText(name));
    for (MenuItem* item : items) {
        QAction* action = item->Caption == "-" ? menu->addSeparator()
                                               : menu->addAction(NativeText(item->Caption));
        action->setObjectName(NativeText(item->Name));
        action->setShortcut(QKeySequence::fromString(NativeText(item->Shortcut)));
        QObject::connect(action, &QAction::triggered, action, [item] {
            if (item->Visible && item->Enabled) Fire(item->OnClick);
        });
        QObject::connect(menu, &QMenu::aboutToShow, action, [item, action] {
            action->setVisible(item->Visible);
            action->setEnabled(item->Enabled);
        });
        // An entry is dim only while its menu is open: a key comes at any time, and asks the item.
        QObject::connect(menu, &QMenu::aboutToHide, action, [action] { action->setEnabled(true); });
    }
}

float MenuBar::RowHeight() const {
    return static_cast<float>(Mine()->sizeHint().height()) * TwipsPerPixel;
}

}  // namespace larder
