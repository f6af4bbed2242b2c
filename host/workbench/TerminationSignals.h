#pragma once

#include <QObject>

class QSocketNotifier;

/// Turns SIGINT and SIGTERM into a Qt signal on the GUI thread. One object in a process.
class TerminationSignals : public QObject
{
    Q_OBJECT
public:
    explicit TerminationSignals(QObject *parent = nullptr);
    /// Puts the default reaction back.
    ~TerminationSignals() override;

signals:
    void requested();

private:
    QSocketNotifier *m_pNotifier = nullptr;
};
