#pragma once

#include <QApplication>
#include <QTimer>

#include <functional>

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
