#include "shell/VexaMainFeatureWidget.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/VexaFeatureTree.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QHBoxLayout>
#include <QLinearGradient>
#include <QMutexLocker>
#include <QStackedWidget>
#include <QThread>
#include <QVBoxLayout>

namespace {

constexpr int MINIMUM_WIDTH = 210;

bool hasTask(long int cameraId)
{
    return QTaskManager::Instance() && QTaskManager::Instance()->GetTaskByIDEx(cameraId);
}

} // namespace

VexaMainFeatureWidget *VexaMainFeatureWidget::s_pInstance = nullptr;

VexaMainFeatureWidget *VexaMainFeatureWidget::instance(QWidget *parent)
{
    if (!s_pInstance) {
        s_pInstance = new VexaMainFeatureWidget(parent);
    }
    return s_pInstance;
}

VexaMainFeatureWidget::VexaMainFeatureWidget(QWidget *parent)
    : CustomWidget(parent)
{
    // Trees ask for the singleton while they are built.
    s_pInstance = this;
    VexaListenTools::instance()->addListener(this, PRIORITY_LEVEL_1);
    initUI();

    QLinearGradient background(0.0, 0.0, 0.0, 1.0);
    background.setCoordinateMode(QGradient::ObjectMode);
    background.setColorAt(0.0, QColor(QStringLiteral("#45464B")));
    background.setColorAt(1.0, QColor(QStringLiteral("#393B3D")));
    cSetBackgroundColor(background);
}

VexaMainFeatureWidget::~VexaMainFeatureWidget()
{
    VexaListenTools::instance()->removeListener(this);
    deleteTrees();
    s_pInstance = nullptr;
}

void VexaMainFeatureWidget::initUI()
{
    setMinimumWidth(366);
    m_pStack = new QStackedWidget(this);
    setMinimumWidth(MINIMUM_WIDTH);

    if (VexaFeatureTree *emptyPage = featureTree(-1, false)) {
        m_pStack->addWidget(emptyPage);
    }

    auto *row = new QHBoxLayout;
    row->setContentsMargins(10, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_pStack);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addSpacing(11);
    column->addLayout(row);

    connect(this, &VexaMainFeatureWidget::sigBeforeDeleteFeature, this,
            &VexaMainFeatureWidget::onBeforeDeleteFeature);
    connect(QVexaEventBus::Instance(), &QVexaEventBus::SigVexaEventUpdateFeatureTree2, this,
            &VexaMainFeatureWidget::OnVexaEventUpdateFeatureTree);
    connect(QVexaEventBus::Instance(), &QVexaEventBus::SigVexaEventRefreshFeatureTree, this,
            &VexaMainFeatureWidget::onRefreshFeature);
}

VexaFeatureTree *VexaMainFeatureWidget::treeInMap(long int cameraId)
{
    const QMutexLocker locker(&m_treesMutex);
    return m_featureTrees.value(cameraId, nullptr);
}

VexaFeatureTree *VexaMainFeatureWidget::featureTree(long int cameraId, bool create)
{
    if (!QTaskManager::Instance()) {
        return nullptr;
    }
    const bool task = hasTask(cameraId);
    const long int usedId = create || task ? cameraId : -1;
    if (VexaFeatureTree *tree = treeInMap(usedId)) {
        return tree;
    }
    if (QThread::currentThread() != thread()) {
        return treeInMap(-1);
    }
    return makeTree(usedId, create || task);
}

VexaFeatureTree *VexaMainFeatureWidget::makeTree(long int cameraId, bool hasCamera)
{
    qInfo().noquote() << QStringLiteral("VexaMainFeatureWidget::featureTree new VexaFeatureTree ")
            + QString::number(cameraId);
    auto *tree = new VexaFeatureTree(hasCamera ? cameraId : -1, nullptr);
    connect(tree, &VexaFeatureTree::SigToolBarBtnClicked, this,
            &VexaMainFeatureWidget::OnToolBarBtnClicked);
    connect(tree, &VexaFeatureTree::SigExpandTree, this, &VexaMainFeatureWidget::OnTreeExpand);
    tree->setObjectName(QStringLiteral("VexaFeatureTree"));
    const QMutexLocker locker(&m_treesMutex);
    m_featureTrees.insert(cameraId, tree);
    return tree;
}

bool VexaMainFeatureWidget::isFeatureTreeExist(long int cameraId)
{
    const QMutexLocker locker(&m_treesMutex);
    return m_featureTrees.contains(cameraId);
}

QMap<long int, VexaFeatureTree *> VexaMainFeatureWidget::getAllFeatureTreesMap()
{
    const QMutexLocker locker(&m_treesMutex);
    return m_featureTrees;
}

QStackedWidget *VexaMainFeatureWidget::getAllFeatureTreeStacked()
{
    return m_pStack;
}

VexaFeatureTree *VexaMainFeatureWidget::currentTree()
{
    return featureTree(m_lCurrentCameraID, false);
}

void VexaMainFeatureWidget::setCurrentCameraID(long int cameraId)
{
    if (!QTaskManager::Instance()) {
        return;
    }
    m_lCurrentCameraID = hasTask(cameraId) ? cameraId : -1;
    VexaFeatureTree *tree = currentTree();
    if (!tree) {
        return;
    }
    if (m_pStack->indexOf(tree) < 0) {
        m_pStack->addWidget(tree);
    }
    m_pStack->setCurrentWidget(tree);
}

void VexaMainFeatureWidget::OnCameraOpen(long int cameraId)
{
    qInfo() << "VexaMainFeatureWidget:OnCameraOpen:" << cameraId;
    if (!m_expandStates.contains(cameraId)) {
        m_expandStates.insert(cameraId, false);
    }
    qInfo() << "VexaMainFeatureWidget:OnCameraOpen:" << m_expandStates.value(cameraId);
}

void VexaMainFeatureWidget::OnCameraClose(long int cameraId)
{
    forgetCamera(cameraId);
}

void VexaMainFeatureWidget::OnCameraDisconnect(long int cameraId)
{
    forgetCamera(cameraId);
}

void VexaMainFeatureWidget::forgetCamera(long int cameraId)
{
    qInfo() << "VexaMainFeatureWidget:OnCameraOpen:" << cameraId;
    m_expandStates.remove(cameraId);
}

void VexaMainFeatureWidget::removeFeatureTree(long int cameraId)
{
    qInfo().noquote() << QStringLiteral("removeFeatureTree ") + QString::number(cameraId);
    VexaFeatureTree *tree = treeInMap(cameraId);
    if (!tree) {
        return;
    }
    tree->readyForDelete();
    VexaListenTools::instance()->notifyListeners(VEXA_EVENT_BEFORE_DELETE_FEATURE_TREE, &cameraId);
    m_expandStates.remove(cameraId);
    {
        const QMutexLocker locker(&m_treesMutex);
        if (m_featureTrees.value(cameraId) != tree) {
            return; // a listener removed it already
        }
        m_featureTrees.remove(cameraId);
    }
    tree->deleteWhenIdle();
    if (cameraId == -1) {
        setCurrentCameraID(m_lCurrentCameraID); // there is always a page under -1
    }
}

void VexaMainFeatureWidget::clearFeatureTrees()
{
    deleteTrees();
    setCurrentCameraID(-1);
}

void VexaMainFeatureWidget::deleteTrees()
{
    m_lCurrentCameraID = -1;
    m_expandStates.clear();
    const QList<long int> ids = getAllFeatureTreesMap().keys();
    for (const long int cameraId : ids) {
        VexaFeatureTree *tree = treeInMap(cameraId);
        if (!tree) {
            continue;
        }
        tree->readyForDelete();
        m_pStack->removeWidget(tree);
        {
            const QMutexLocker locker(&m_treesMutex);
            m_featureTrees.remove(cameraId);
        }
        tree->deleteWhenIdle();
    }
    VexaPropertyTreeItem::releaseTransInfo();
}

void VexaMainFeatureWidget::onBeforeDeleteFeature(long int lCameraID)
{
    // Not through featureTree: a camera without a task would give the empty page.
    VexaFeatureTree *tree = treeInMap(lCameraID);
    if (!tree) {
        return;
    }
    if (m_pStack->currentWidget() == tree) {
        if (VexaFeatureTree *emptyPage = featureTree(-1, false)) {
            if (m_pStack->indexOf(emptyPage) < 0) {
                m_pStack->addWidget(emptyPage);
            }
            m_pStack->setCurrentWidget(emptyPage);
        }
    }
    m_pStack->removeWidget(tree);
    tree->removeCameraID(lCameraID);
    if (m_lCurrentCameraID == lCameraID && lCameraID != -1) {
        setCurrentCameraID(-1);
    }
}

void VexaMainFeatureWidget::notify(int event, void *data)
{
    if (event == VEXA_EVENT_BEFORE_DELETE_FEATURE_TREE && data) {
        emit sigBeforeDeleteFeature(*static_cast<long int *>(data));
    }
}

void VexaMainFeatureWidget::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange && !treeInMap(m_lCurrentCameraID)) {
        return;
    }
    CustomWidget::changeEvent(event);
}

void VexaMainFeatureWidget::showEvent(QShowEvent *event)
{
    setAttribute(Qt::WA_Mapped);
    CustomWidget::showEvent(event);
}

QSize VexaMainFeatureWidget::sizeHint() const
{
    QSize hint = CustomWidget::sizeHint();
    hint.setWidth(MINIMUM_WIDTH);
    return hint;
}
