#include "host/utilitykit/FileDialogs.h"

#include "host/utilitykit/HostSettings.h"

#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMap>
#include <QPointer>
#include <QRegularExpression>

namespace {

QMap<QString, std::function<QString(const QString &)>> &saveNameHooks()
{
    static QMap<QString, std::function<QString(const QString &)>> hooks;
    return hooks;
}

/// A relative name alone is put into the last folder.
QFileInfo startingPlace(const QString &path)
{
    const QString last = HostSettings::instance().lastFolder();
    const QDir folder(last.isEmpty() || !QFileInfo(last).isDir() ? QDir::homePath() : last);
    if (path.isEmpty()) {
        return QFileInfo(folder.absolutePath());
    }
    const QFileInfo given(path);
    return given.isAbsolute() ? given : QFileInfo(folder, path);
}

/// Of a filter for one kind of file ("Text Files(*.txt)"); empty for any other.
QString suffixOf(const QString &filter)
{
    static const QRegularExpression oneKind(QStringLiteral("^[^()]*\\(\\*\\.(\\w+)\\)$"));
    return oneKind.match(filter).captured(1);
}

QString run(QFileDialog *newDialog, const QString &title, const QString &path)
{
    const QPointer<QFileDialog> dialog(newDialog);
    const QFileInfo place = startingPlace(path);
    const QString platform = QGuiApplication::platformName();
    dialog->setOption(QFileDialog::DontUseNativeDialog,
                      platform == QLatin1String("offscreen")
                          || platform == QLatin1String("minimal"));
    dialog->setWindowTitle(title);
    if (place.isDir()) {
        dialog->setDirectory(place.absoluteFilePath());
    } else {
        dialog->setDirectory(place.absolutePath());
        dialog->selectFile(place.fileName());
    }
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) {
        return QString();
    }
    const QStringList files = accepted ? dialog->selectedFiles() : QStringList();
    delete dialog;
    if (files.isEmpty()) {
        return QString();
    }
    HostSettings::instance().setLastFolder(QFileInfo(files.first()).absolutePath());
    return files.first();
}

} // namespace

QString FileDialogs::openFile(QWidget *parent, const QString &title, const QString &path,
                              const QString &filter)
{
    auto *const dialog = new QFileDialog(parent);
    dialog->setNameFilter(filter);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    return run(dialog, title, path);
}

QString FileDialogs::saveFile(QWidget *parent, const QString &title, const QString &path,
                              const QString &filter, const QString &defaultSuffix)
{
    auto *const dialog = new QFileDialog(parent);
    dialog->setNameFilter(filter);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setDefaultSuffix(defaultSuffix);
    const QString chosen = run(dialog, title, path);
    const auto hook = saveNameHooks().value(defaultSuffix);
    return hook && !chosen.isEmpty() ? hook(chosen) : chosen;
}

void FileDialogs::setSaveNameHook(const QString &defaultSuffix,
                                  std::function<QString(const QString &)> hook)
{
    saveNameHooks().insert(defaultSuffix, std::move(hook));
}

QString VexaInterface::getOpenFileName(QWidget *parent, const QString &title,
                                       const QString &directory, const QString &filter)
{
    return FileDialogs::openFile(parent, title, directory, filter);
}

QString VexaInterface::getSaveFileName(QWidget *parent, const QString &title,
                                       const QString &directory, const QString &filter)
{
    return FileDialogs::saveFile(parent, title, directory, filter, suffixOf(filter));
}
