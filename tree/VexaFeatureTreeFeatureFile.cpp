// Feature files: the roads of export and import between tool bar, host and job thread.

#include "ControlKit/Custom.h"
#include "ControlKit/CustomSaveDoneHintDlg.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QFunction.h"
#include "UtilityKit/VexaInterface.h"
#include "featurefile/FeatureFileFormat.h"
#include "featurefile/VexaFeatureDiff.h"
#include "featurefile/VexaFeatureImExThread.h"
#include "model/FeatureTreeBuilder.h"
#include "model/NodeDependencyMaps.h"
#include "shell/VexaFeatureToolBar.h"
#include "tree/FeatureFileTexts.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"
#include "tree/WriteMessages.h"

#include <QDebug>
#include <QDir>

#include <utility>

namespace {

using Job = VexaFeatureImExThread;
using WriteMessages::translated;

constexpr int HINT_SUCCESS = 5;
constexpr int SAVE_HINT_MS = 2000;

QString fileFilter()
{
    return translated("lang_qfeaturetree_featurestream") + FeatureFileFormat::FILE_FILTER;
}

} // namespace

/// What is done between the tree's pages of one export or import.
struct VexaFeatureTree::FeatureFileSession
{
    QString path; ///< that the user chose, for the result message
    QString source; ///< of the import: a path, or the text
    QString failure; ///< why the last job failed
    bool isImporting = false; ///< from the file dialog to the end of the last job
    bool isSilent = false;
    bool isCheckOnly = false; ///< of an import that ends with its check
    int unsaidExports = 0; ///< silent ones whose end has not been told
    bool isStopping = false;
    quint64 number = 0; ///< counts the imports; what a stop leaves behind belongs to none
    quint64 job = 0; ///< that the import waits for
};

void VexaFeatureTree::makeFeatureFileThread()
{
    m_pImExThread = new VexaFeatureImExThread(m_lCameraID, this);
    m_pFeatureFileSession = std::make_shared<FeatureFileSession>();
}

FeatureDifferences VexaFeatureTree::featureDifferences() const
{
    return m_pImExThread ? m_pImExThread->diffMap() : FeatureDifferences();
}

FeatureFileReport VexaFeatureTree::featureFileReport() const
{
    return m_pImExThread ? m_pImExThread->report() : FeatureFileReport();
}

FeatureFileProgress VexaFeatureTree::featureFileProgress() const
{
    return m_pImExThread && m_pImExThread->isRunning() ? m_pImExThread->progress()
                                                       : FeatureFileProgress();
}

quint32 VexaFeatureTree::featureFileResult() const
{
    return m_pImExThread ? m_pImExThread->resultCode() : 0;
}

QString VexaFeatureTree::featureFileFailure() const
{
    return m_pImExThread ? m_pFeatureFileSession->failure : QString();
}

QString VexaFeatureTree::failureText(bool isExport) const
{
    const FeatureFileReport &report = m_pImExThread->report();
    if (m_pFeatureFileSession->isStopping) {
        return FeatureFileTexts::failureText(FeatureFileFailure::Stopped, QString());
    }
    const QString text = FeatureFileTexts::failureText(report.failure, report.failureDetail);
    return isExport || !text.isEmpty() ? text
                                       : FeatureFileTexts::resultText(m_pImExThread->resultCode());
}

bool VexaFeatureTree::isFeatureFileBusy() const
{
    return m_pImExThread && (m_pImExThread->isRunning() || m_pFeatureFileSession->isImporting);
}

void VexaFeatureTree::logFeatureFile(int level, const QStringList &lines)
{
    for (const QString &line : lines) {
        if (line.isEmpty()) {
            continue;
        }
        QFunction::Instance()->InsertMessageLog(static_cast<_MESSAGE_LOG_LEVEL_>(level),
                                                GetCurCameraName(), line);
    }
}

/// A tool bar that the host has switched off, since the device is lost, stays so.
void VexaFeatureTree::updateToolBarForJob(bool busy)
{
    if (m_pToolBar) {
        m_pToolBar->UpdateToolBarBtn(m_nToolBarState, static_cast<int>(m_lCameraID), busy);
    }
}

bool VexaFeatureTree::waitForFeatureFileJob(bool silent)
{
    if (!m_pImExThread->isRunning()) {
        return true;
    }
    if (!silent) {
        ShowMessage(this, translated("lang_qfeaturetree_threadisrun"), QString(), QString(),
                    HINT_FAILURE, false);
        return false;
    }
    m_pImExThread->quit();
    m_pImExThread->wait();
    return true;
}

void VexaFeatureTree::startFeatureFileJob(unsigned int operation, const QString &path,
                                          const char *loadingKey)
{
    m_pImExThread->setCameraId(m_lCameraID);
    m_pImExThread->setNodes(m_pBuilder->elementMap());
    m_pImExThread->setFeatureCategories(m_pBuilder->featureParentMap());
    m_pImExThread->setCategoryFeatures(m_pBuilder->allFeatureNames());
    QVector<SelectedLink> links;
    for (const QPair<QString, QString> &record : m_pMaps->pSelectedRecords()) {
        links.append({record.first, record.second});
    }
    m_pImExThread->setSelectedLinks(links);
    m_pImExThread->setOperation(operation, path);
    m_pFeatureFileSession->failure.clear();
    m_pImExThread->start(QThread::InheritPriority);
    updateToolBarForJob(true);
    if (loadingKey) {
        ShowLoadingDlg(true, translated(loadingKey));
    }
}

void VexaFeatureTree::SaveCamFeatures(bool silent, const QString &path)
{
    TreeCallScope scope(this);
    if (!m_pImExThread || !waitForFeatureFileJob(silent)) {
        return;
    }
    QString chosen = path;
    if (!silent) {
        QTaskManager *manager = QTaskManager::Instance();
        QCameraBasicTask *basicTask = manager ? manager->GetTaskByIDEx(m_lCameraID) : nullptr;
        if (!basicTask) {
            return;
        }
        QString name = QString(FeatureFileFormat::FILE_NAME)
                           .arg(basicTask->_GetCameraModelName(), basicTask->_GetCameraSerialNum());
        name.replace(QLatin1Char('/'), QLatin1Char('-'));
        const long int cameraId = m_lCameraID;
        const QPointer<VexaFeatureTree> self(this);
        chosen = Custom::getSaveFileName(window(), translated("lang_qfeaturetree_savefeature"),
                                         name, fileFilter(), FeatureFileFormat::FILE_SUFFIX);
        if (!self || scope.treeIsGoing() || chosen.isEmpty() || cameraId != m_lCameraID
            || !waitForFeatureFileJob(false)) {
            return;
        }
        m_pFeatureFileSession->path = chosen;
    }
    if (m_pBuilder->elementMap().isEmpty()) {
        return;
    }
    m_pFeatureFileSession->unsaidExports += silent ? 1 : 0;
    startFeatureFileJob(silent ? Job::OPERATION_EXPORT_TO_BAG : Job::OPERATION_EXPORT, chosen,
                        silent ? nullptr : "lang_qfeaturetree_savefeatureing");
}

bool VexaFeatureTree::mayImport(bool silent)
{
    const char *reason = nullptr;
    QCameraTask *task = cameraTask();
    if (!m_bCanEdit) {
        reason = "lang_qfeaturetree_importreadonly";
    } else if (task && task->GetCameraState() == TASK_CAMERA_GRABBING) {
        reason = "lang_qfeaturetree_importgrabbing";
    }
    if (!reason) {
        return true;
    }
    m_pFeatureFileSession->isImporting = false;
    m_pFeatureFileSession->failure = translated(reason);
    logFeatureFile(MESSAGE_LOG_ERROR, {translated(reason)});
    if (silent) {
        emit SigEndImportFeature(false);
    } else {
        ShowMessage(this, translated(reason), QString(), QString(), HINT_FAILURE, false);
    }
    return false;
}

void VexaFeatureTree::LoadCamFeatures(bool silent, const QString &source)
{
    TreeCallScope scope(this);
    QTaskManager *manager = QTaskManager::Instance();
    // A device that is closed is the job's to tell of.
    if (!m_pImExThread || !manager || !manager->GetTaskByIDEx(m_lCameraID)) {
        return;
    }
    FeatureFileSession &session = *m_pFeatureFileSession;
    if (silent && session.isImporting) {
        session.failure = translated("lang_qfeaturetree_threadisrun");
        emit SigEndImportFeature(false);
        return;
    }
    if (session.isImporting) {
        ShowMessage(this, translated("lang_qfeaturetree_threadisrun"), QString(), QString(),
                    HINT_FAILURE, false);
        return;
    }
    if (!waitForFeatureFileJob(silent) || !mayImport(silent)) {
        return;
    }
    session.isImporting = true;
    session.isSilent = silent;
    session.isCheckOnly = false;
    session.source = source;
    const quint64 number = ++session.number;
    if (!silent) {
        const QPointer<VexaFeatureTree> self(this);
        const QString chosen = VexaInterface::getOpenFileName(
            window(), translated("lang_qfeaturetree_loadfeatures"), QString(), fileFilter());
        if (!self || scope.treeIsGoing() || m_pFeatureFileSession->number != number) {
            return;
        }
        if (chosen.isEmpty() || !waitForFeatureFileJob(false)) {
            session.isImporting = false;
            return;
        }
        session.path = chosen;
        session.source = chosen;
    }
    startFeatureFileJob(silent ? Job::OPERATION_CHECK_TEXT : Job::OPERATION_CHECK_FILE,
                        session.source, silent ? nullptr : "lang_qfeaturetree_parsingfile");
    session.job = m_pImExThread->jobNumber();
}

bool VexaFeatureTree::CheckCamFeatures(const QString &text)
{
    const TreeCallScope scope(this);
    if (!m_pImExThread || !cameraTask() || isFeatureFileBusy()) {
        return false;
    }
    FeatureFileSession &session = *m_pFeatureFileSession;
    session.isImporting = true;
    session.isSilent = true;
    session.isCheckOnly = true;
    ++session.number;
    startFeatureFileJob(Job::OPERATION_CHECK_TEXT, text, nullptr);
    session.job = m_pImExThread->jobNumber();
    return true;
}

void VexaFeatureTree::endCheckOnly(bool success)
{
    m_pFeatureFileSession->isImporting = false;
    emit SigEndCheckFeature(success);
}

void VexaFeatureTree::stopFeatureFileJob()
{
    if (!m_pImExThread) {
        return;
    }
    FeatureFileSession &session = *m_pFeatureFileSession;
    const bool wasRunning = m_pImExThread->isRunning();
    const unsigned int operation = m_pImExThread->operation();
    const bool isSaidByJob = wasRunning
        && (operation == Job::OPERATION_CHECK_TEXT || operation == Job::OPERATION_APPLY_TEXT);
    const bool isImportUnsaid = session.isImporting && session.isSilent && !isSaidByJob;
    // Whatever dialog is open: the call that opened it finds that its import is over.
    ++session.number;
    session.isImporting = false;
    if (m_pFeatureDiff && m_pFeatureDiff->isVisible()) {
        m_pFeatureDiff->reject();
    }
    session.isStopping = true;
    m_pImExThread->stopJob();
    if (isImportUnsaid || session.unsaidExports > 0) {
        session.failure = failureText(false);
    }
    if (wasRunning) {
        OnEndFeatureImExThread(static_cast<int>(operation), false);
    }
    for (int unsaid = std::exchange(session.unsaidExports, 0); unsaid > 0; --unsaid) {
        emit SigEndExportFeature(false);
    }
    if (isImportUnsaid && session.isCheckOnly) {
        endCheckOnly(false);
    } else if (isImportUnsaid) {
        emit SigEndImportFeature(false);
    }
    // Also that of a job whose end was still on its way.
    hideLoading();
    m_pImExThread->setNodes({});
    session.isStopping = false;
}

void VexaFeatureTree::OnEndFeatureImExThread(int operation, bool success)
{
    const TreeCallScope scope(this);
    if (!m_pImExThread) {
        return;
    }
    const bool isStop = m_pFeatureFileSession->isStopping;
    const bool isCheck =
        operation == Job::OPERATION_CHECK_TEXT || operation == Job::OPERATION_CHECK_FILE;
    if (!isStop) {
        // The end of a job that nobody waits for any more is dropped.
        const quint64 job = m_pImExThread->takeEndedJob();
        if (job == 0 || (isCheck && job != m_pFeatureFileSession->job)) {
            return;
        }
        // The thread itself may still be about to finish, or do the next job already.
        if (job == m_pImExThread->jobNumber()) {
            m_pImExThread->wait();
        }
    }
    const bool isExport = !isCheck && operation % 2 == 0;
    m_pFeatureFileSession->failure = success ? QString() : failureText(isExport);
    hideLoading();
    if (!isStop && cameraTask()) {
        updateToolBarForJob(m_pImExThread->isRunning());
    }
    switch (operation) {
    case Job::OPERATION_TASK_SAVE:
    case Job::OPERATION_EXPORT:
        endExport(success);
        break;
    case Job::OPERATION_TASK_SAVE_SILENT:
    case Job::OPERATION_EXPORT_TO_BAG:
        logExport();
        m_pFeatureFileSession->unsaidExports = qMax(0, m_pFeatureFileSession->unsaidExports - 1);
        emit SigEndExportFeature(success);
        break;
    case Job::OPERATION_TASK_LOAD:
    case Job::OPERATION_APPLY_FILE:
        endImport(success);
        break;
    case Job::OPERATION_TASK_LOAD_SILENT:
    case Job::OPERATION_APPLY_TEXT:
        logImport();
        m_pFeatureFileSession->isImporting = false;
        emit SigEndImportFeature(success);
        refreshAfterFeatureFile();
        break;
    case Job::OPERATION_CHECK_TEXT:
    case Job::OPERATION_CHECK_FILE:
        if (m_pFeatureFileSession->isCheckOnly && operation == Job::OPERATION_CHECK_TEXT) {
            endCheckOnly(success);
        } else if (success) {
            goOnWithImport(operation);
        } else {
            endCheck(operation);
        }
        break;
    default:
        break;
    }
}

void VexaFeatureTree::logExport()
{
    if (m_pFeatureFileSession->isStopping) {
        return;
    }
    const FeatureFileReport &report = m_pImExThread->report();
    logFeatureFile(MESSAGE_LOG_WARNING, FeatureFileTexts::exportLines(report));
    if (report.bPollingParamWritten) {
        OnAddValueChangedNodes({QStringLiteral("PollingParam")});
    }
}

void VexaFeatureTree::logImport()
{
    if (!m_pFeatureFileSession->isStopping) {
        const FeatureFileReport &report = m_pImExThread->report();
        logFeatureFile(report.notImported.isEmpty() ? MESSAGE_LOG_INFO : MESSAGE_LOG_WARNING,
                       FeatureFileTexts::importLines(report));
    }
}

void VexaFeatureTree::refreshAfterFeatureFile()
{
    if (!m_pFeatureFileSession->isStopping && !m_bReadyForDelete) {
        OnBtnRefresh();
    }
}

void VexaFeatureTree::endExport(bool success)
{
    logExport();
    if (success) {
        showSaveHint();
        return;
    }
    qCritical("OnFeaturesSaveRst failed.");
    const QString text = translated("lang_qfeaturetree_savefeaturefailed");
    logFeatureFile(MESSAGE_LOG_ERROR, {text, m_pFeatureFileSession->failure});
    ShowMessage(this, text, QString(), QString(), HINT_FAILURE, false);
}

void VexaFeatureTree::showSaveHint()
{
    const QString path = QDir::toNativeSeparators(m_pFeatureFileSession->path);
    const QString text = translated("lang_qfeaturetree_savefeaturesuccess");
    const QPointer<CustomSaveDoneHintDlg> hint = new CustomSaveDoneHintDlg(this, text, path);
    hint->SetMsgText(text, path, true, SAVE_HINT_MS);
    hint->exec();
    // The tree may have gone meanwhile, and the hint with it.
    delete hint;
}

void VexaFeatureTree::endImport(bool success)
{
    logImport();
    m_pFeatureFileSession->isImporting = false;
    if (success) {
        const QString text = translated("lang_qfeaturetree_loadfeaturecompleted");
        logFeatureFile(MESSAGE_LOG_INFO, {text});
        ShowMessage(this, translated("Prompt"), text, QString(), HINT_SUCCESS, false);
    } else {
        qCritical("OnFeaturesLoadRst failed.");
        QString text = translated("lang_qfeaturetree_loadfeaturefailed");
        if (m_pImExThread->resultCode() == FEATURE_FILE_NO_DEVICE) {
            text += FeatureFileTexts::resultText(FEATURE_FILE_NO_DEVICE);
            logFeatureFile(MESSAGE_LOG_ERROR, {text});
        } else {
            logFeatureFile(MESSAGE_LOG_ERROR, {text, m_pFeatureFileSession->failure});
        }
        ShowMessage(this, text, QString(), QString(), HINT_FAILURE, false);
    }
    refreshAfterFeatureFile();
}

void VexaFeatureTree::endCheck(int operation)
{
    m_pFeatureFileSession->isImporting = false;
    const quint32 code = m_pImExThread->resultCode();
    qCritical().noquote() << QStringLiteral("OnFeaturesLoadRst failed.error code:%1")
                                 .arg(VexaInterface::Int2HexNumberQString(code));
    if (operation == Job::OPERATION_CHECK_TEXT) {
        emit SigEndImportFeature(false);
    } else {
        const QString text = translated("lang_qfeaturetree_loadfeaturefailed");
        logFeatureFile(MESSAGE_LOG_ERROR, {text, m_pFeatureFileSession->failure});
        ShowMessage(this, text + QStringLiteral("%1").arg(FeatureFileTexts::resultText(code)),
                    QString(), QString(), HINT_FAILURE, false);
    }
    refreshAfterFeatureFile();
}

void VexaFeatureTree::goOnWithImport(int operation)
{
    TreeCallScope scope(this);
    const std::shared_ptr<FeatureFileSession> session = m_pFeatureFileSession;
    const QPointer<VexaFeatureTree> self(this);
    const quint64 number = session->number;
    const auto isOver = [&] { return !self || scope.treeIsGoing() || session->number != number; };
    const bool silent = operation == Job::OPERATION_CHECK_TEXT;
    // Below the boxes a silent export may put its own report there.
    const quint32 code = m_pImExThread->resultCode();
    const QStringList again = m_pImExThread->report().severalTimes;
    const FeatureDifferences differences = m_pImExThread->diffMap();
    if (code != FEATURE_FILE_OK) {
        const bool goesOn = confirmed(BOX_QUESTION, FeatureFileTexts::resultText(code));
        if (isOver()) {
            return;
        }
        if (!goesOn) {
            session->isImporting = false;
            return;
        }
    }
    if (!again.isEmpty()) {
        logFeatureFile(
            MESSAGE_LOG_WARNING,
            {translated("lang_qfeaturetree_severaltimes").arg(again.join(QLatin1String(", ")))});
    }
    if (!differences.isEmpty()) {
        if (!m_pFeatureDiff) {
            m_pFeatureDiff = new VexaFeatureDiff(this);
        }
        m_pFeatureDiff->setDiffs(differences);
        const int answer = m_pFeatureDiff->exec();
        if (isOver()) {
            return;
        }
        if (answer != QDialog::Accepted) {
            session->isImporting = false;
            if (silent) {
                emit SigEndImportFeature(true);
                refreshAfterFeatureFile();
            }
            return;
        }
    }
    // Meanwhile the host may have started the device.
    if (!mayImport(silent)) {
        return;
    }
    waitForFeatureFileJob(true);
    startFeatureFileJob(silent ? Job::OPERATION_APPLY_TEXT : Job::OPERATION_APPLY_FILE,
                        session->source, silent ? nullptr : "lang_qfeaturetree_loadingfeatures");
}
