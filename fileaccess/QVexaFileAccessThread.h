#pragma once

#include <QString>
#include <QThread>

/// Runs one transfer between a file of the host and one of a device, off the GUI thread. It cannot be cancelled. GUI
/// thread, but for run.
class QVexaFileAccessThread : public QThread
{
    Q_OBJECT
public:
    enum Direction {
        DIRECTION_IMPORT = 0, ///< host to device
        DIRECTION_EXPORT = 1 ///< device to host
    };
    /// In the place of the device layer's code: there was no task, and no transfer.
    static constexpr int NO_TASK = -4;

    explicit QVexaFileAccessThread(long int cameraId, QObject *parent = nullptr);
    /// Waits for the end of the transfer.
    ~QVexaFileAccessThread() override;

    /// `fileName` is an entry of the device's FileSelector. Does nothing while a transfer runs.
    void setJob(int direction, const QString &path, const QString &fileName);
    /// What the task says about the failure of the last transfer, empty after a success; for reading once it ended.
    QString remark() const { return m_strRemark; }
    /// The line of a message that stands for a failure's code.
    static QString errorText(int code);

Q_SIGNALS:
    /// `strError` begins a line of its own; empty on success.
    void SigEndFileAccessThread(int nThreadType, bool bResult, QString strError);

protected:
    void run() override;

private:
    int transfer();

    long int m_lCameraID = -1;
    int m_nDirection = DIRECTION_IMPORT;
    QString m_strPath;
    QString m_strFileName;
    QString m_strRemark;
};
