#pragma once

#include "host/workbench/WorkbenchOptions.h"

#include <QFutureWatcher>
#include <QObject>
#include <QTimer>

/// Copies one file from or to a device for the command line, off the GUI thread, and tells how far it is on the
/// standard error.
class FileCopy : public QObject
{
    Q_OBJECT
public:
    explicit FileCopy(QObject *parent = nullptr);
    ~FileCopy() override;

    /// One at a time.
    void start(long int cameraId, const FileJob &job);

signals:
    /// `reason` is empty when all went well.
    void finished(QString reason);

private:
    void showProgress();

    long int m_lCameraId = -1;
    QString m_strName;
    qint64 m_nShown = -1;
    QTimer m_progressTimer;
    QFutureWatcher<QString> m_copy;
};
