#include "fileaccess/QVexaFileAccessThread.h"

#include "DeviceTaskModule/CameraInterface.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"

#include <QCoreApplication>

QVexaFileAccessThread::QVexaFileAccessThread(long int cameraId, QObject *parent)
    : QThread(parent)
    , m_lCameraID(cameraId)
{
}

QVexaFileAccessThread::~QVexaFileAccessThread()
{
    wait();
}

void QVexaFileAccessThread::setJob(int direction, const QString &path, const QString &fileName)
{
    if (isRunning()) {
        return;
    }
    m_nDirection = direction;
    m_strPath = path;
    m_strFileName = fileName;
}

QString QVexaFileAccessThread::errorText(int code)
{
    return QStringLiteral("\r\n")
        + QCoreApplication::translate("VexaFileAccessThread", "lang_vexafileaccessthread_sdkerror")
              .arg(CameraInterface::GenerateSDKCode(code, true));
}

void QVexaFileAccessThread::run()
{
    if (m_nDirection != DIRECTION_IMPORT && m_nDirection != DIRECTION_EXPORT) {
        return;
    }
    const int code = transfer();
    emit SigEndFileAccessThread(m_nDirection, code == 0, code == 0 ? QString() : errorText(code));
}

int QVexaFileAccessThread::transfer()
{
    m_strRemark.clear();
    QTaskManager *manager = QTaskManager::Instance();
    QCameraBasicTask *basicTask = manager ? manager->GetTaskByIDEx(m_lCameraID) : nullptr;
    QCameraTask *task = basicTask ? basicTask->_CameraTak() : nullptr;
    if (!task) {
        return NO_TASK;
    }
    const int code = m_nDirection == DIRECTION_EXPORT
        ? task->ReadDeviceFile(m_strPath, m_strFileName)
        : task->WriteDeviceFile(m_strPath, m_strFileName);
    if (code != 0) {
        m_strRemark = task->GetLastErrorRemark();
    }
    return code;
}
