#include "platform/Dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>
#include <QString>
#include <QStringList>

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
        case Dialogs::Buttons::YesNoPreferNo:
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            box.setEscapeButton(QMessageBox::No);
            if (buttons == Dialogs::Buttons::YesNoPreferNo) box.setDefaultButton(QMessageBox::No);
            break;
    }
}

// "Name|*.a;*.b" in Qt's terms, "Name (*.a *.b)". What a name says of patterns itself is left out.
QStringList NameFilters(const std::string& filter) {
    const QStringList parts = NativeText(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        const QString name = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
        filters << name + QStringLiteral(" (") + patterns + QLatin1Char(')');
    }
    return filters;
}

// The first of these that is there: the folder that is asked for, or that of the file; the one
// where the user was before; his pictures; his home.
QString FolderToBeginIn(const std::string& startAt, const std::string& lastFolder) {
    const QFileInfo start(QFile::decodeName(startAt.c_str()));
    for (const QString& folder :
         {start.filePath(), start.filePath().isEmpty() ? QString() : start.path(),
          QFile::decodeName(lastFolder.c_str()),
          QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)}) {
        if (QFileInfo(folder).isDir()) return folder;
    }
    return QDir::homePath();
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

std::optional<std::string> SystemDialogs::OpenFile(const FileQuestion& question) {
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("OpenFile"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    // Its own dialog takes patterns without regard to case, as cameras name their pictures.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setNameFilters(NameFilters(question.Filter));
    dialog.setDirectory(FolderToBeginIn(question.StartAt, lastFolder_));
    const bool accepted = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    // A path that was typed leads out of the folder that the dialog shows.
    const QString file = accepted ? dialog.selectedFiles().first() : QString();
    const QString folder = accepted ? QFileInfo(file).path() : dialog.directory().path();
    lastFolder_ = QFile::encodeName(folder).toStdString();
    if (!accepted) return std::nullopt;
    return QFile::encodeName(file).toStdString();
}

}  // namespace larder
