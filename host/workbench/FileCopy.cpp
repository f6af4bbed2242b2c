#include "host/workbench/FileCopy.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "host/workbench/WorkbenchTexts.h"

#include <QtConcurrent>

#include <chrono>
#include <cstdio>

namespace {

constexpr std::chrono::milliseconds PROGRESS_INTERVAL{200};

QCameraTask *taskOf(long int cameraId)
{
    QTaskManager *manager = QTaskManager::Instance();
    QCameraBasicTask *basicTask = manager ? manager->GetTaskByIDEx(cameraId) : nullptr;
    return basicTask ? basicTask->_CameraTak() : nullptr;
}

/// Empty, or why not. Blocks until the copy has ended.
QString copied(long int cameraId, const FileJob &job)
{
    QCameraTask *task = taskOf(cameraId);
    if (!task) {
        return workbenchText("lang_workbench_lost");
    }
    const int code = job.kind == FileJob::Kind::Get ? task->ReadDeviceFile(job.path, job.name)
                                                    : task->WriteDeviceFile(job.path, job.name);
    // The remark belongs to this thread.
    return code == 0 ? QString() : task->GetLastErrorRemark();
}

} // namespace

FileCopy::FileCopy(QObject *parent)
    : QObject(parent)
{
    m_progressTimer.setInterval(PROGRESS_INTERVAL);
    connect(&m_progressTimer, &QTimer::timeout, this, &FileCopy::showProgress);
    connect(&m_copy, &QFutureWatcher<QString>::finished, this, [this] {
        m_progressTimer.stop();
        emit finished(m_copy.result());
    });
}

FileCopy::~FileCopy()
{
    m_copy.waitForFinished();
}

void FileCopy::start(long int cameraId, const FileJob &job)
{
    m_lCameraId = cameraId;
    m_strName = job.name;
    m_nShown = -1;
    m_progressTimer.start();
    m_copy.setFuture(QtConcurrent::run(copied, cameraId, job));
}

void FileCopy::showProgress()
{
    qint64 total = -1;
    qint64 done = -1;
    QCameraTask *task = taskOf(m_lCameraId);
    if (task && task->GetFileAccessProgress(&total, &done) == 0 && done > m_nShown) {
        m_nShown = done;
        const QString line = total < 0
            ? QStringLiteral("%1: %2 bytes\n").arg(m_strName).arg(done)
            : QStringLiteral("%1: %2 of %3 bytes\n").arg(m_strName).arg(done).arg(total);
        std::fputs(line.toUtf8().constData(), stderr);
    }
}
