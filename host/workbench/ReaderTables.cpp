#include "host/workbench/ReaderTables.h"

#include "host/workbench/DeviceThreads.h"
#include "model/VexaPropertyTreeItem.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QtConcurrent>

namespace {

/// Changes come in bursts: one reading for all of them.
constexpr int READ_DELAY_MS = 100;
constexpr int ALL_COLUMNS = -1;

} // namespace

ReaderTables::ReaderTables(VexaFeatureTree &tree, QObject *parent)
    : QObject(parent)
    , m_pTree(&tree)
    , m_lCameraID(tree.GetCurCameraID())
    , m_polling(tree)
{
    m_readTimer.setSingleShot(true);
    m_readTimer.setInterval(READ_DELAY_MS);
    connect(&m_readTimer, &QTimer::timeout, this, &ReaderTables::read);
    connect(&m_watcher, &QFutureWatcherBase::finished, this, &ReaderTables::takeReading);
    VexaMainFeatureWidget *mainWidget = VexaMainFeatureWidget::instance();
    if (!m_polling.isEmpty()) {
        mainWidget->SetPollingMap(m_lCameraID, m_polling.rows());
        read();
    }
    if (m_codeTypes.take(tree)) {
        mainWidget->SetCodeTypeMap(m_lCameraID, m_codeTypes.limits());
    }
    if (!isEmpty()) {
        tree.AddFeatureObserverable(this);
    }
}

ReaderTables::~ReaderTables()
{
    if (m_pTree) {
        m_pTree->RemoveFeatureObserverable(this);
    }
    VexaMainFeatureWidget *mainWidget = VexaMainFeatureWidget::instance();
    mainWidget->DeletePollingMap(m_lCameraID);
    mainWidget->SetCodeTypeMap(m_lCameraID, QMap<QString, int>());
}

void ReaderTables::retranslate()
{
    m_polling.retranslate();
    m_codeTypes.retranslate();
}

void ReaderTables::readAgain()
{
    m_polling.forgetValues();
    m_bOutdated = m_watcher.isRunning();
    m_readTimer.start();
}

void ReaderTables::read()
{
    if (m_polling.isEmpty()) {
        return;
    }
    if (m_watcher.isRunning()) {
        m_bOutdated = true;
        return;
    }
    m_bOutdated = false;
    m_watcher.setFuture(
        QtConcurrent::run(deviceThreads(), readSelectedSet, m_lCameraID, m_polling.parameters()));
}

void ReaderTables::takeReading()
{
    // What was written while it was read is newer.
    if (m_bOutdated) {
        m_readTimer.start();
    } else {
        m_polling.enter(m_watcher.result());
    }
}

void ReaderTables::takeLimits()
{
    if (!m_pTree || !m_codeTypes.take(*m_pTree)) {
        return;
    }
    const QMap<QString, int> limits = m_codeTypes.limits();
    VexaMainFeatureWidget::instance()->SetCodeTypeMap(m_lCameraID, limits);
    // Their editors have taken the former limit.
    for (auto it = limits.cbegin(); it != limits.cend(); ++it) {
        if (VexaPropertyTreeItem *item = m_pTree->propertyItemByName(it.key())) {
            item->notifyViewUpdate(m_lCameraID, ALL_COLUMNS, false, false);
        }
    }
}

void ReaderTables::notifyFeatureChanged(const QString &nodeName, bool)
{
    if (CodeTypeModel::counts(nodeName)) {
        takeLimits();
    } else if (nodeName.startsWith(QLatin1String("Polling"))) {
        m_bOutdated = m_watcher.isRunning();
        m_readTimer.start();
    }
}

void ReaderTables::notifyFeatureTreeReleased(long int)
{
    m_pTree = nullptr;
}
