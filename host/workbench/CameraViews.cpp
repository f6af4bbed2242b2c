#include "host/workbench/CameraViews.h"

#include "host/workbench/CameraPage.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/GuidedPages.h"
#include "host/workbench/WorkbenchTexts.h"
#include "tree/VexaFeatureTree.h"

#include <QEvent>
#include <QStackedLayout>
#include <QTabBar>
#include <QVBoxLayout>

namespace {

enum Tab { TAB_FEATURES, TAB_PAGES };

} // namespace

CameraViews::CameraViews(QWidget *pFeatures, QWidget *pParent)
    : QWidget(pParent)
    , m_pTabs(new QTabBar(this))
    , m_pStack(new QStackedLayout)
    , m_pPages(new GuidedPages(this))
{
    m_pTabs->setObjectName(QStringLiteral("CameraViewTabs"));
    m_pTabs->setDrawBase(false);
    m_pTabs->setExpanding(false);
    m_pTabs->addTab(QString());
    m_pTabs->addTab(QString());
    m_pStack->addWidget(pFeatures);
    m_pStack->addWidget(m_pPages);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_pTabs);
    column->addLayout(m_pStack, 1);
    connect(m_pTabs, &QTabBar::currentChanged, this, &CameraViews::showChosen);
    retranslate();
    setCamera(nullptr);
}

void CameraViews::setCamera(const CameraSession *pCamera)
{
    // Before the first full update nothing is known of the device.
    m_lCameraID = pCamera && pCamera->isFirstUpdateDone() ? pCamera->cameraId() : NO_CAMERA_ID;
    if (const VexaFeatureTree *pTree = pCamera ? CameraPage::tree(pCamera->cameraId()) : nullptr) {
        connect(pTree, &VexaFeatureTree::SigHide, this, &CameraViews::showPages,
                Qt::UniqueConnection);
    }
    showChosen();
}

void CameraViews::showPages()
{
    m_pTabs->setCurrentIndex(TAB_PAGES);
}

void CameraViews::showChosen()
{
    const bool bPages = m_pTabs->currentIndex() == TAB_PAGES;
    m_pPages->showCamera(bPages ? m_lCameraID : NO_CAMERA_ID);
    m_pStack->setCurrentIndex(bPages ? TAB_PAGES : TAB_FEATURES);
}

void CameraViews::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    QWidget::changeEvent(event);
}

void CameraViews::retranslate()
{
    m_pTabs->setTabText(TAB_FEATURES, workbenchText("lang_workbench_allfeatures"));
    m_pTabs->setTabText(TAB_PAGES, workbenchText("lang_workbench_guidedpages"));
}
