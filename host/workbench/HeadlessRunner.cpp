#include "host/workbench/HeadlessRunner.h"

#include "ShellServicesModule/QFunction.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/DumpWriter.h"
#include "host/workbench/WorkbenchTexts.h"
#include "host/workbench/WorkbenchWindow.h"
#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/VexaFeatureTree.h"

#include <QPixmap>
#include <QSaveFile>
#include <QTimer>

#include <cstdio>

namespace {

/// Editors beyond the first rows are opened in slices after the update: the picture waits for them.
constexpr std::chrono::milliseconds PICTURE_SETTLE_TIME{300};

bool writeStandardOutput(const QByteArray &bytes)
{
    return std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout)
        == static_cast<std::size_t>(bytes.size())
        && std::fflush(stdout) == 0;
}

} // namespace

HeadlessRunner::HeadlessRunner(WorkbenchWindow &window, const WorkbenchOptions &options,
                               const QStringList &deviceIds, std::chrono::milliseconds limit,
                               QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_options(options)
    , m_deviceIds(deviceIds)
    , m_waitingFor(deviceIds)
    , m_limit(limit)
{
    // The reason stands in the message log already.
    connect(&m_window, &WorkbenchWindow::deviceOpenFailed, this, [this] { finish(1); });
    connect(&m_window, &WorkbenchWindow::deviceLost, this, [this] { finish(1); });
    connect(&m_window, &WorkbenchWindow::deviceUpdated, this, &HeadlessRunner::onDeviceUpdated);
}

void HeadlessRunner::start()
{
    QTimer::singleShot(m_limit, this, &HeadlessRunner::onTimeOut);
    if (!m_options.screenshotFile.isEmpty()) {
        m_window.show();
    }
    for (const QString &id : qAsConst(m_deviceIds)) {
        m_window.openDevice(id);
    }
}

void HeadlessRunner::onDeviceUpdated(const QString &id)
{
    m_waitingFor.removeAll(id);
    if (m_waitingFor.isEmpty() && !m_bFinished) {
        QTimer::singleShot(m_options.screenshotFile.isEmpty() ? std::chrono::milliseconds(0)
                                                              : PICTURE_SETTLE_TIME,
                           this, &HeadlessRunner::runJobs);
    }
}

void HeadlessRunner::onTimeOut()
{
    if (!m_waitingFor.isEmpty()) {
        fail(workbenchText("lang_workbench_timeout")
                 .arg(m_waitingFor.join(QStringLiteral(", ")))
                 .arg(std::chrono::duration<double>(m_limit).count()));
    }
}

void HeadlessRunner::runJobs()
{
    if (m_bFinished) {
        return;
    }
    const CameraSession *session = m_window.session(m_deviceIds.value(0));
    const VexaFeatureTree *tree = session ? session->tree() : nullptr;
    if (!tree) {
        fail(workbenchText("lang_workbench_lost"));
        return;
    }
    const bool done = (m_options.readName.isEmpty() || read(*tree))
        && (m_options.dumpFile.isEmpty() || dump(*tree))
        && (m_options.screenshotFile.isEmpty() || takePicture());
    finish(done ? 0 : 1);
}

bool HeadlessRunner::read(const VexaFeatureTree &tree)
{
    const VexaPropertyTreeItem *item = tree.propertyItemByName(m_options.readName);
    if (!item) {
        fail(workbenchText("lang_workbench_unknownfeature").arg(m_options.readName));
        return false;
    }
    if (!item->isValueCached()) {
        fail(workbenchText("lang_workbench_notread").arg(m_options.readName));
        return false;
    }
    if (!writeStandardOutput(item->valueSnapshot()->displayValue().toUtf8() + '\n')) {
        fail(workbenchText("lang_workbench_writefailed").arg(QStringLiteral("-")));
        return false;
    }
    return true;
}

bool HeadlessRunner::dump(const VexaFeatureTree &tree)
{
    const QByteArray json = DumpWriter(tree).toJson();
    bool written = false;
    if (m_options.dumpFile == QLatin1String("-")) {
        written = writeStandardOutput(json);
    } else {
        // A file that cannot be written whole is left as it was.
        QSaveFile file(m_options.dumpFile);
        file.setDirectWriteFallback(true);
        written =
            file.open(QIODevice::WriteOnly) && file.write(json) == json.size() && file.commit();
    }
    if (!written) {
        fail(workbenchText("lang_workbench_writefailed").arg(m_options.dumpFile));
    }
    return written;
}

bool HeadlessRunner::takePicture()
{
    if (m_window.grab().save(m_options.screenshotFile, "PNG")) {
        return true;
    }
    fail(workbenchText("lang_workbench_writefailed").arg(m_options.screenshotFile));
    return false;
}

void HeadlessRunner::fail(const QString &reason)
{
    QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_ERROR, QString(), reason);
    finish(1);
}

void HeadlessRunner::finish(int exitCode)
{
    if (!m_bFinished) {
        m_bFinished = true;
        emit finished(exitCode);
    }
}
