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
    for (quint64 &job : m_endedJobs) {
        job = 0;
    }
}

quint64 VexaFeatureImExThread::takeEndedJob()
{
    const QMutexLocker locker(&m_endedMutex);
    return m_endedJobs.isEmpty() ? 0 : m_endedJobs.dequeue();
}

void VexaFeatureImExThread::run()
{
    if (m_nOperation > OPERATION_CHECK_FILE) {
        return;
    }
    bool success = false;
    try {
        success = runOperation();
    } catch (const std::bad_alloc &) {
        qCritical("feature file job %u ran out of memory", m_nOperation);
        m_report.failure = FeatureFileFailure::Memory;
    }
    if (m_bStop) {
        return;
    }
    {
        const QMutexLocker locker(&m_endedMutex);
        m_endedJobs.enqueue(m_nJob);
    }
    emit SigEndFeatureImExThread(static_cast<int>(m_nOperation), success);
}

bool VexaFeatureImExThread::runOperation()
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
        return exportFeatures(false);
    case OPERATION_EXPORT_TO_BAG:
        return exportFeatures(true);
    case OPERATION_APPLY_FILE:
    case OPERATION_APPLY_TEXT:
        return importFeatures(false);
    default:
        return importFeatures(true);
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

bool VexaFeatureImExThread::exportFeatures(bool toBag)
{
    m_report = FeatureFileReport();
    if (m_filters.isEmpty()) {
        m_filters = FeatureFileFilters::load();
    }
    FeatureJob job;
    if (!fillJob(&job)) {
        m_report.failure = FeatureFileFailure::NoDevice;
        return false;
    }
    FeatureExporter exporter(job);
    QString text;
    const bool built = exporter.build(&text);
    m_report = exporter.report();
    if (!built) {
        return false;
    }
    m_report.failure = toBag
        ? FeatureFileStore::appendToBag(m_strPath, job.pBasicTask->_GetCameraSerialNum(), text,
                                        &m_report.failureDetail)
        : FeatureFileStore::writeFile(m_strPath, text, &m_report.failureDetail);
    return m_report.failure == FeatureFileFailure::None;
}

bool VexaFeatureImExThread::importFeatures(bool compare)
{
    m_nResultCode = FEATURE_FILE_NO_DEVICE;
    m_report = FeatureFileReport();
    FeatureJob job;
    if (!fillJob(&job)) {
        return false;
    }
    m_nResultCode = FEATURE_FILE_OK;
    if (compare) {
        m_diffs.clear();
    }
    const bool isFile =
        m_nOperation == OPERATION_APPLY_FILE || m_nOperation == OPERATION_CHECK_FILE;
    FeatureImporter importer(job);
    const bool done =
        importer.run(isFile ? FeatureFileReader::textOf(m_strPath) : m_strPath, compare);
    m_nResultCode = importer.resultCode();
    m_report = importer.report();
    if (compare) {
        m_diffs = importer.differences();
    }
    return done;
}
