#include "featurefile/VexaFeatureImExThread.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "featurefile/FeatureExporter.h"
#include "featurefile/FeatureFileFilters.h"
#include "featurefile/FeatureFileReader.h"
#include "featurefile/FeatureFileStore.h"
#include "featurefile/FeatureImporter.h"

#include <QDebug>
#include <QMutexLocker>

#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t SCRATCH_SIZE = 0x100000;

QCameraBasicTask *taskOf(long int cameraId)
{
    QTaskManager *manager = QTaskManager::Instance();
    QCameraBasicTask *task = manager ? manager->GetTaskByID(cameraId) : nullptr;
    return task && task->_CameraTak() ? task : nullptr;
}

} // namespace

void VexaFeatureImExThread::Free::operator()(void *memory) const
{
    std::free(memory);
}

VexaFeatureImExThread::VexaFeatureImExThread(long int cameraId, QObject *parent)
    : QThread(parent)
    , m_lCameraID(cameraId)
    , m_scratch(std::calloc(1, SCRATCH_SIZE))
{
    if (!m_scratch) {
        throw std::bad_alloc();
    }
}

VexaFeatureImExThread::~VexaFeatureImExThread()
{
    m_scratch.reset();
    stopJob();
}

void VexaFeatureImExThread::setNodes(const QMap<QString, QDomElement> &nodes)
{
    m_nodes = nodes;
    m_document = nodes.isEmpty() ? QDomDocument() : nodes.first().ownerDocument();
}

void VexaFeatureImExThread::setFeatureCategories(const QMap<QString, QString> &categories)
{
    m_featureCategories = categories;
}

void VexaFeatureImExThread::setSelectedLinks(const QVector<SelectedLink> &links)
{
    m_selectedLinks = links;
}

void VexaFeatureImExThread::setCategoryFeatures(const QStringList &features)
{
    m_categoryFeatures = features;
}

void VexaFeatureImExThread::setCameraId(long int cameraId)
{
    m_lCameraID = cameraId;
}

void VexaFeatureImExThread::setOperation(unsigned int operation, const QString &path)
{
    if (!isRunning()) {
        m_strPath = path;
        setOperation(operation);
    }
}

void VexaFeatureImExThread::setOperation(unsigned int operation)
{
    if (!isRunning()) {
        m_nOperation = operation;
        ++m_nJob;
    }
}

void VexaFeatureImExThread::stopJob()
{
    m_bStop = true;
    quit();
    wait();
    m_bStop = false;
    // Ends that are on their way to the tree are nobody's any more.
    const QMutexLocker locker(&m_endedMutex);
    for (Outcome &outcome : m_ended) {
        outcome.job = 0;
    }
}

quint64 VexaFeatureImExThread::takeEndedJob()
{
    Outcome outcome;
    {
        const QMutexLocker locker(&m_endedMutex);
        if (!m_ended.isEmpty()) {
            outcome = m_ended.dequeue();
        }
    }
    if (outcome.job != 0) {
        takeResults(outcome);
    }
    return outcome.job;
}

void VexaFeatureImExThread::takeResults(const Outcome &outcome)
{
    m_report = outcome.report;
    m_nResultCode = outcome.result.value_or(m_nResultCode);
    m_diffs = outcome.differences.value_or(m_diffs);
}

void VexaFeatureImExThread::run()
{
    if (m_nOperation > OPERATION_CHECK_FILE) {
        return;
    }
    Outcome outcome;
    outcome.job = m_nJob;
    bool success = false;
    try {
        success = runOperation(outcome);
    } catch (const std::bad_alloc &) {
        qCritical("feature file job %u ran out of memory", m_nOperation);
        outcome.report.failure = FeatureFileFailure::Memory;
    }
    if (m_bStop) {
        takeResults(outcome); // the GUI thread waits in stopJob
        return;
    }
    {
        const QMutexLocker locker(&m_endedMutex);
        m_ended.enqueue(outcome);
    }
    emit SigEndFeatureImExThread(static_cast<int>(m_nOperation), success);
}

bool VexaFeatureImExThread::runOperation(Outcome &outcome)
{
    m_nDone = 0;
    m_nTotal = 0;
    switch (m_nOperation) {
    case OPERATION_TASK_SAVE:
    case OPERATION_TASK_SAVE_SILENT:
        return runTaskJob(true);
    case OPERATION_TASK_LOAD:
    case OPERATION_TASK_LOAD_SILENT:
        return runTaskJob(false);
    case OPERATION_EXPORT:
        return exportFeatures(false, outcome);
    case OPERATION_EXPORT_TO_BAG:
        return exportFeatures(true, outcome);
    case OPERATION_APPLY_FILE:
    case OPERATION_APPLY_TEXT:
        return importFeatures(false, outcome);
    default:
        return importFeatures(true, outcome);
    }
}

bool VexaFeatureImExThread::runTaskJob(bool save)
{
    QCameraBasicTask *basicTask = taskOf(m_lCameraID);
    if (!basicTask) {
        return false;
    }
    QCameraTask *task = basicTask->_CameraTak();
    return (save ? task->SaveFeatures(m_strPath) : task->LoadFeatures(m_strPath)) == 0;
}

bool VexaFeatureImExThread::fillJob(FeatureJob *job)
{
    job->nodes = m_nodes;
    job->featureCategories = m_featureCategories;
    job->selectedLinks = m_selectedLinks;
    job->categoryFeatures = m_categoryFeatures;
    job->filters = m_filters;
    job->pBasicTask = taskOf(m_lCameraID);
    job->pStop = &m_bStop;
    job->pDone = &m_nDone;
    job->pTotal = &m_nTotal;
    return job->pBasicTask != nullptr;
}

bool VexaFeatureImExThread::exportFeatures(bool toBag, Outcome &outcome)
{
    FeatureFileReport &report = outcome.report;
    if (m_filters.isEmpty()) {
        m_filters = FeatureFileFilters::load();
    }
    FeatureJob job;
    if (!fillJob(&job)) {
        report.failure = FeatureFileFailure::NoDevice;
        return false;
    }
    FeatureExporter exporter(job);
    QString text;
    const bool built = exporter.build(&text);
    report = exporter.report();
    if (!built) {
        return false;
    }
    report.failure = toBag
        ? FeatureFileStore::appendToBag(m_strPath, job.pBasicTask->_GetCameraSerialNum(), text,
                                        &report.failureDetail)
        : FeatureFileStore::writeFile(m_strPath, text, &report.failureDetail);
    return report.failure == FeatureFileFailure::None;
}

bool VexaFeatureImExThread::importFeatures(bool compare, Outcome &outcome)
{
    outcome.result = FEATURE_FILE_NO_DEVICE;
    FeatureJob job;
    if (!fillJob(&job)) {
        return false;
    }
    outcome.result = FEATURE_FILE_OK;
    if (compare) {
        outcome.differences = FeatureDifferences();
    }
    const bool isFile =
        m_nOperation == OPERATION_APPLY_FILE || m_nOperation == OPERATION_CHECK_FILE;
    FeatureImporter importer(job);
    const bool done =
        importer.run(isFile ? FeatureFileReader::textOf(m_strPath) : m_strPath, compare);
    outcome.result = importer.resultCode();
    outcome.report = importer.report();
    if (compare) {
        outcome.differences = importer.differences();
    }
    return done;
}
