#include "platform/Dialogs.h"

#include <QApplication>
#include <QMessageBox>
#include <QString>

#include "platform/Native.h"

namespace larder {

namespace {

QString WithLineFeeds(const std::string& text) {
    QString lines = NativeText(text);
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    lines.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return lines;
}

QMessageBox::Icon NativeIcon(Dialogs::Icon icon) {
    switch (icon) {
        case Dialogs::Icon::Critical:
            return QMessageBox::Critical;
        case Dialogs::Icon::Question:
            return QMessageBox::Question;
        case Dialogs::Icon::Exclamation:
            return QMessageBox::Warning;
        case Dialogs::Icon::Information:
            return QMessageBox::Information;
        case Dialogs::Icon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

void AddButtons(QMessageBox& box, Dialogs::Buttons buttons) {
    switch (buttons) {
        case Dialogs::Buttons::Ok:
            box.setStandardButtons(QMessageBox::Ok);
            break;
        case Dialogs::Buttons::OkCancel:
            box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
            break;
        case Dialogs::Buttons::YesNo:
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            box.setEscapeButton(QMessageBox::No);
            break;
    }
}

}  // namespace

Dialogs::Answer SystemDialogs::MessageBox(const std::string& text, Buttons buttons, Icon icon,
                                          const std::string& title) {
    QMessageBox box(QApplication::activeWindow());
    box.setObjectName(QStringLiteral("MessageBox"));
    box.setWindowTitle(NativeText(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(WithLineFeeds(text));
    box.setIcon(NativeIcon(icon));
    box.setWindowModality(Qt::ApplicationModal);
    AddButtons(box, buttons);
    switch (box.exec()) {
        case QMessageBox::Yes:
            return Answer::Yes;
        case QMessageBox::No:
            return Answer::No;
        case QMessageBox::Cancel:
            return Answer::Cancel;
        default:
            return Answer::Ok;
    }
}

}  // namespace larder
