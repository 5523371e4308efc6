#include "platform/Menu.h"

#include <QAction>
#include <QCursor>
#include <QMenu>
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

}  // namespace larder
