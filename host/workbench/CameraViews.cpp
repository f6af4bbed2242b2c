#include "host/workbench/CameraViews.h"

#include "ControlKit/CustomLabel.h"
#include "host/workbench/CameraPage.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/GuidedPages.h"
#include "host/workbench/WorkbenchTexts.h"
#include "tree/VexaFeatureTree.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedLayout>
#include <QTabBar>
#include <QVBoxLayout>

namespace {

enum Tab { TAB_FEATURES, TAB_PAGES };
/// Behind the two tabs in the stack.
constexpr int NOT_OPEN = TAB_PAGES + 1;

/// Needs what its content needs, although the content by itself says that it could be squeezed further.
class Unsqueezed : public QWidget
{
public:
    explicit Unsqueezed(QWidget *pContent)
        : m_pContent(pContent)
    {
        auto *row = new QHBoxLayout(this);
        row->setContentsMargins(0, 0, 0, 0);
        row->addWidget(pContent);
    }
    QSize minimumSizeHint() const override
    {
        return m_pContent ? m_pContent->minimumSizeHint() : QWidget::minimumSizeHint();
    }

private:
    QPointer<QWidget> m_pContent; ///< the window deletes it before the rest
};

/// In a window that is narrower than its content it scrolls sideways.
class SidewaysArea : public QScrollArea
{
public:
    explicit SidewaysArea(QWidget *pContent)
    {
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFocusPolicy(Qt::NoFocus);
        setWidget(new Unsqueezed(pContent));
        viewport()->setAutoFillBackground(false);
        widget()->setAutoFillBackground(false);
    }
    QSize minimumSizeHint() const override
    {
        return {QScrollArea::minimumSizeHint().width(),
                widget()->minimumSizeHint().height() + horizontalScrollBar()->sizeHint().height()};
    }
};

} // namespace

CameraViews::CameraViews(QWidget *pFeatures, QWidget *pParent)
    : QWidget(pParent)
    , m_pTabs(new QTabBar(this))
    , m_pStack(new QStackedLayout)
    , m_pPages(new GuidedPages(this))
    , m_pNotOpen(new CustomLabel(this))
{
    m_pTabs->setObjectName(QStringLiteral("CameraViewTabs"));
    m_pTabs->setDrawBase(false);
    m_pTabs->setExpanding(false);
    m_pTabs->addTab(QString());
    m_pTabs->addTab(QString());
    m_pNotOpen->setObjectName(QStringLiteral("NotOpenHint"));
    m_pNotOpen->setAlignment(Qt::AlignCenter);
    m_pNotOpen->setWordWrap(true);
    m_pNotOpen->cSetFontSize(14);
    m_pNotOpen->cSetFontColor(QColor(QStringLiteral("#BEBEBE")));
    m_pStack->addWidget(new SidewaysArea(pFeatures));
    m_pStack->addWidget(m_pPages);
    m_pStack->addWidget(m_pNotOpen);
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
    m_bOpen = pCamera;
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
    m_pStack->setCurrentIndex(!m_bOpen ? NOT_OPEN : bPages ? TAB_PAGES : TAB_FEATURES);
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
    m_pNotOpen->setText(workbenchText("lang_workbench_notopen"));
}
