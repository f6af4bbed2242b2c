#include "host/workbench/HeadlessRunner.h"

#include "ShellServicesModule/QFunction.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/DumpWriter.h"
#include "host/workbench/FeatureEdit.h"
#include "host/workbench/FeatureFileTools.h"
#include "host/workbench/OfferedEntries.h"
#include "host/workbench/StandardOutput.h"
#include "host/workbench/WorkbenchTexts.h"
#include "host/workbench/WorkbenchWindow.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/VexaFeatureTree.h"

#include <QPixmap>
#include <QSaveFile>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

/// A write is followed by a refresh of what depends on it, after 200 ms without another.
constexpr std::chrono::milliseconds REFRESH_DELAY{250};
/// Editors beyond the first rows are opened in slices after the update: the picture waits for them.
constexpr std::chrono::milliseconds PICTURE_SETTLE_TIME{300};

QVector<OfferedEntry> fileEntries(const VexaFeatureTree &tree)
{
    const VexaPropertyTreeItem *item = tree.propertyItemByName(QStringLiteral("FileSelector"));
    const std::unique_ptr<CTreeItemValue> value = item ? item->valueSnapshot() : nullptr;
    const auto *files = dynamic_cast<const CTreeEnumationItemValue *>(value.get());
    return files ? offeredEntries(tree, *files) : QVector<OfferedEntry>();
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
    , m_boxes(options.yes)
    , m_featureFiles(options.yes, limit)
{
    m_limitTimer.setSingleShot(true);
    connect(&m_limitTimer, &QTimer::timeout, this, &HeadlessRunner::onTimeOut);
    // The reason stands in the message log already.
    connect(&m_window, &WorkbenchWindow::deviceOpenFailed, this, [this] { fail(); });
    connect(&m_window, &WorkbenchWindow::deviceLost, this, [this] {
        if (!m_bRestarting) {
            fail();
        }
    });
    connect(&m_featureFiles, &FeatureFileRunner::finished, this,
            &HeadlessRunner::takeFeatureFileJob);
    connect(QFunction::Instance(), &QFunction::messageLogged, this, [this] { ++m_nMessages; });
    connect(&m_fileCopy, &FileCopy::finished, this, [this](const QString &reason) {
        if (m_bFinished) {
            return;
        }
        if (reason.isEmpty()) {
            nextJob();
        } else {
            fail(workbenchText("lang_workbench_notcopied")
                     .arg(m_options.fileJobs.at(m_nFileJob - 1).name, reason));
        }
    });
    connect(&m_window, &WorkbenchWindow::deviceUpdated, this, &HeadlessRunner::onDeviceUpdated);
}

void HeadlessRunner::start()
{
    m_limitTimer.start(m_limit);
    if (!m_options.screenshotFile.isEmpty()) {
        m_window.show();
    }
    for (const QString &id : qAsConst(m_deviceIds)) {
        m_window.openDevice(id);
    }
}

void HeadlessRunner::onDeviceUpdated(const QString &id)
{
    if (m_waitingFor.removeAll(id) > 0 && m_waitingFor.isEmpty() && !m_bFinished) {
        m_limitTimer.stop();
        m_bRestarting = false;
        const bool last = m_nJob == m_options.featureJobs.size();
        QTimer::singleShot(last && !m_options.screenshotFile.isEmpty()
                               ? PICTURE_SETTLE_TIME
                               : std::chrono::milliseconds(0),
                           this, &HeadlessRunner::nextJob);
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

VexaFeatureTree *HeadlessRunner::tree(const QString &deviceId) const
{
    const CameraSession *session = m_window.session(deviceId);
    return session ? session->tree() : nullptr;
}

bool HeadlessRunner::hasFurtherJobs() const
{
    return m_nJob < m_options.featureJobs.size() || m_nFileJob < m_options.fileJobs.size()
        || m_nFeatureFileJob < m_options.featureFileJobs.size() || m_options.files
        || !m_options.readName.isEmpty() || !m_options.dumpFile.isEmpty()
        || !m_options.screenshotFile.isEmpty();
}

void HeadlessRunner::nextJob()
{
    if (m_bFinished) {
        return;
    }
    VexaFeatureTree *featureTree = tree();
    if (!featureTree) {
        fail(workbenchText("lang_workbench_lost"));
    } else if (!checkOutcome(*featureTree)) {
        fail(workbenchText("lang_workbench_kept")
                 .arg(m_options.featureJobs.at(m_nJob - 1).name, m_strFormerValue));
    } else if (m_nJob < m_options.featureJobs.size()) {
        perform(*featureTree);
    } else if (m_nFileJob < m_options.fileJobs.size()) {
        startFileJob(*featureTree);
    } else if (m_nFeatureFileJob < m_options.featureFileJobs.size()) {
        startFeatureFileJob();
    } else {
        runFinalJobs(*featureTree);
    }
}

void HeadlessRunner::perform(VexaFeatureTree &tree)
{
    const EditJob job = m_options.featureJobs.at(m_nJob++);
    m_strFormerValue = FeatureEdit::shownValue(tree, job.name);
    const int messages = m_nMessages;
    m_bRestarting = FeatureEdit::restartsDevice(job);
    QString reason;
    const bool done = FeatureEdit::perform(tree, job, &reason);
    m_bWasTold = m_nMessages > messages;
    if (m_bFinished) {
        return;
    }
    if (!done) {
        fail(reason);
    } else if (m_bRestarting && !hasFurtherJobs()) {
        finish(0);
    } else {
        waitForUpdate();
    }
}

void HeadlessRunner::waitForUpdate()
{
    m_waitingFor = m_deviceIds.mid(0, 1);
    m_limitTimer.start(m_limit);
    if (!m_bRestarting) {
        QTimer::singleShot(REFRESH_DELAY, this, [this] {
            if (CameraSession *session = m_window.session(m_deviceIds.value(0))) {
                session->refresh();
            }
        });
    }
}

bool HeadlessRunner::checkOutcome(const VexaFeatureTree &tree)
{
    if (m_nJob == 0 || m_options.featureJobs.at(m_nJob - 1).kind != EditJob::Kind::Write) {
        return true;
    }
    // A device may answer a write with another value, also with the former one ("Once"). Only with a word from the
    // tree is it a write that was kept from the device.
    const EditJob &job = m_options.featureJobs.at(m_nJob - 1);
    return !std::exchange(m_bWasTold, false)
        || FeatureEdit::shownValue(tree, job.name) != m_strFormerValue
        || FeatureEdit::holds(tree, job);
}

void HeadlessRunner::runFinalJobs(const VexaFeatureTree &tree)
{
    const bool done = (!m_options.files || listFiles(tree))
        && (m_options.readName.isEmpty() || read(tree))
        && (m_options.dumpFile.isEmpty() || dump(tree))
        && (m_options.screenshotFile.isEmpty() || takePicture());
    finish(done ? 0 : 1);
}

void HeadlessRunner::startFileJob(const VexaFeatureTree &tree)
{
    FileJob job = m_options.fileJobs.at(m_nFileJob++);
    const QVector<OfferedEntry> entries = fileEntries(tree);
    const auto shown =
        std::find_if(entries.cbegin(), entries.cend(),
                     [&job](const OfferedEntry &entry) { return entry.displayName == job.name; });
    const bool isEntry =
        std::any_of(entries.cbegin(), entries.cend(),
                    [&job](const OfferedEntry &entry) { return entry.name == job.name; });
    if (!isEntry && shown != entries.cend()) {
        job.name = shown->name;
    }
    m_fileCopy.start(tree.GetCurCameraID(), job);
}

void HeadlessRunner::startFeatureFileJob()
{
    const FeatureFileJob &job = m_options.featureFileJobs.at(m_nFeatureFileJob++);
    QVector<VexaFeatureTree *> trees;
    for (const QString &id : qAsConst(m_deviceIds)) {
        if (VexaFeatureTree *featureTree = tree(id)) {
            trees += featureTree;
        }
    }
    if (trees.size() == m_deviceIds.size()) {
        m_featureFiles.start(job, trees);
    } else {
        fail(workbenchText("lang_workbench_lost"));
    }
}

void HeadlessRunner::takeFeatureFileJob(int exitCode)
{
    if (exitCode != 0 || !hasFurtherJobs()) {
        finish(exitCode);
    } else if (m_options.featureFileJobs.at(m_nFeatureFileJob - 1).kind
               == FeatureFileJob::Kind::Import) {
        waitForUpdate();
    } else {
        nextJob();
    }
}

bool HeadlessRunner::listFiles(const VexaFeatureTree &tree)
{
    const QVector<OfferedEntry> entries = fileEntries(tree);
    if (entries.isEmpty()) {
        fail(workbenchText("lang_workbench_nofiles"));
        return false;
    }
    QByteArray lines;
    for (const OfferedEntry &entry : entries) {
        lines += entry.name.toUtf8() + '\t' + entry.displayName.toUtf8() + '\n';
    }
    const bool written = StandardOutput::write(lines);
    if (!written) {
        fail(workbenchText("lang_workbench_writefailed").arg(QStringLiteral("-")));
    }
    return written;
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
    if (!StandardOutput::write(item->valueSnapshot()->displayValue().toUtf8() + '\n')) {
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
        written = StandardOutput::write(json);
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
    fail();
}

void HeadlessRunner::fail()
{
    finish(m_options.isComparison() ? FeatureFileTools::COMPARE_TROUBLE : 1);
}

void HeadlessRunner::finish(int exitCode)
{
    if (!m_bFinished) {
        m_bFinished = true;
        emit finished(exitCode);
    }
}
