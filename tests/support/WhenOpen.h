#pragma once

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>

#include <functional>
#include <utility>

/// Does this with the modal dialog of that class as soon as one is up, as long as `context` lives.
template<class Dialog>
void whenOpen(const std::function<void(Dialog *)> &act, QObject *context = qApp)
{
    auto *const poll = new QTimer(context);
    QObject::connect(poll, &QTimer::timeout, context, [poll, act] {
        if (auto *const dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget())) {
            poll->stop();
            poll->deleteLater();
            act(dialog);
        }
    });
    poll->start(5);
}

/// Takes this file in the file dialogs that come, after `before`. They read the folder in their own time, and accept
/// nothing until then.
inline void chooseFile(
    QObject *context, const QString &path, const std::function<void()> &before = [] {})
{
    auto *const poll = new QTimer(context);
    QObject::connect(poll, &QTimer::timeout, context, [path, before, known = false]() mutable {
        if (auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
            if (!std::exchange(known, true)) {
                before();
            }
            dialog->setOption(QFileDialog::DontConfirmOverwrite);
            dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(path);
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
        }
    });
    poll->start(20);
}
