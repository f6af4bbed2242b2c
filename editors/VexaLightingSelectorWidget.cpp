#include "editors/VexaLightingSelectorWidget.h"

#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomPushButton.h"
#include "editors/CLightingSelectorInterWidget.h"
#include "model/VexaPropertyTreeItem.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QSignalBlocker>

namespace {

constexpr int BUTTON_WIDTH = 65; // pixels
constexpr int BUTTON_HEIGHT = 30; // pixels
constexpr int GAP = 10; // pixels

CustomPushButton *makeButton(QWidget *pParent)
{
    auto *const pButton = new CustomPushButton(2, pParent);
    pButton->setFixedSize(BUTTON_WIDTH, BUTTON_HEIGHT);
    return pButton;
}

} // namespace

VexaLightingSelectorWidget::VexaLightingSelectorWidget(VexaPropertyTreeItem *item, QWidget *parent)
    : CustomWidget(parent)
    , m_pPicture(new CLightingSelectorInterWidget(item, this))
    , m_pAllCheck(new CustomCheckBox(2, this))
    , m_pAllOnButton(makeButton(this))
    , m_pAllOffButton(makeButton(this))
{
    auto *const pControls = new QVBoxLayout;
    pControls->setContentsMargins(0, 0, 0, 0);
    pControls->setSpacing(GAP);
    pControls->addStretch();
    pControls->addWidget(m_pAllCheck);
    pControls->addWidget(m_pAllOnButton);
    pControls->addWidget(m_pAllOffButton);
    pControls->addStretch();
    auto *const pLayout = new QHBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(GAP);
    pLayout->addWidget(m_pPicture);
    pLayout->addLayout(pControls);
    pLayout->addStretch();
    setFocusProxy(m_pPicture);
    connect(m_pPicture, &CLightingSelectorInterWidget::sigStateChanged, this,
            &VexaLightingSelectorWidget::updateControls);
    connect(m_pAllCheck, &QCheckBox::toggled, m_pPicture, &CLightingSelectorInterWidget::switchAll);
    connect(m_pAllOnButton, &QAbstractButton::clicked, m_pPicture,
            [pPicture = m_pPicture] { pPicture->switchAll(true); });
    connect(m_pAllOffButton, &QAbstractButton::clicked, m_pPicture,
            [pPicture = m_pPicture] { pPicture->switchAll(false); });
    retranslate();
    updateControls();
}

void VexaLightingSelectorWidget::refill()
{
    m_pPicture->refill();
    updateControls();
    update();
}

void VexaLightingSelectorWidget::updateControls()
{
    const LightingAccess &light = m_pPicture->light();
    const bool bButtons = light.isLive() && light.allOffItem() && light.allOffItem()->visible();
    m_pAllOnButton->setVisible(bButtons);
    m_pAllOffButton->setVisible(bButtons);
    m_pAllCheck->setVisible(!bButtons && light.type() != LightingLayout::TYPE_THREE);
    const QSignalBlocker blocker(m_pAllCheck);
    m_pAllCheck->setChecked(m_pPicture->isAllOn());
}

void VexaLightingSelectorWidget::changeEvent(QEvent *event)
{
    CustomWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
}

void VexaLightingSelectorWidget::retranslate()
{
    const auto text = [](const char *pKey) {
        return QCoreApplication::translate("QLightingSelectorWidget", pKey);
    };
    m_pAllCheck->setText(text(
        QT_TRANSLATE_NOOP("QLightingSelectorWidget", "lang_qlightingselectorwidget_allturnon")));
    m_pAllOnButton->setText(
        text(QT_TRANSLATE_NOOP("QLightingSelectorWidget", "lang_qlightingselectorwidget_allon")));
    m_pAllOffButton->setText(
        text(QT_TRANSLATE_NOOP("QLightingSelectorWidget", "lang_qlightingselectorwidget_alloff")));
}
