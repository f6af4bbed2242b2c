#include "editors/VexaFeatureDrawWidget.h"

#include "ControlKit/CustomPushButton.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>

namespace {

constexpr int BUTTON_WIDTH = 65; // pixels
constexpr int BUTTON_HEIGHT = 30; // pixels
constexpr int BUTTON_GAP = 8; // pixels
constexpr char ACTIVE_PROPERTY[] = "drawActive"; // "1" while drawing is on, else "0"

const QColor PLAIN_TEXT(0xCC, 0xCC, 0xCC);
const QColor ACTIVE_TEXT(0xFF, 0xFF, 0xFF);
const QColor ACTIVE_BACKGROUND(0xF7, 0x69, 0x00);

CustomPushButton *makeButton(QWidget *pParent)
{
    auto *const pButton = new CustomPushButton(2, pParent);
    pButton->setFixedSize(BUTTON_WIDTH, BUTTON_HEIGHT);
    pButton->cSetFontColor(PLAIN_TEXT);
    return pButton;
}

} // namespace

VexaFeatureDrawWidget::VexaFeatureDrawWidget(int nDrawType, QWidget *pParent)
    : QWidget(pParent)
    , m_nDrawType(nDrawType)
    , m_pDrawButton(makeButton(this))
    , m_pBatchButton(makeButton(this))
{
    m_pDrawButton->setProperty(ACTIVE_PROPERTY, QStringLiteral("0"));
    m_pBatchButton->setVisible(false);
    auto *const pLayout = new QHBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pLayout->addWidget(m_pDrawButton);
    pLayout->addSpacing(BUTTON_GAP);
    pLayout->addWidget(m_pBatchButton);
    pLayout->addStretch();
    setFocusProxy(m_pDrawButton);
    connect(m_pDrawButton, &QAbstractButton::clicked, this, &VexaFeatureDrawWidget::onDrawClicked);
    connect(m_pBatchButton, &QAbstractButton::clicked, this,
            &VexaFeatureDrawWidget::onBatchClicked);
    retranslate();
}

void VexaFeatureDrawWidget::setButtonsEnabled(bool bEnabled)
{
    m_pDrawButton->setEnabled(bEnabled);
    m_pBatchButton->setEnabled(bEnabled);
}

void VexaFeatureDrawWidget::setDrawActive(bool bActive)
{
    if (bActive) {
        m_pDrawButton->cSetFontColor(ACTIVE_TEXT);
        m_pDrawButton->cSetBackgroundColor(ACTIVE_BACKGROUND);
    } else {
        m_pDrawButton->cSetFontColor(PLAIN_TEXT);
        m_pDrawButton->cCopyAttribute(m_pBatchButton);
    }
    m_pDrawButton->setProperty(ACTIVE_PROPERTY, QString::number(int(bActive)));
}

void VexaFeatureDrawWidget::onDrawClicked()
{
    setDrawActive(m_pDrawButton->property(ACTIVE_PROPERTY).toInt() != 1);
    m_nState = m_pDrawButton->property(ACTIVE_PROPERTY).toInt() == 1 ? STATE_ON : STATE_OFF;
    emit SigButtonClicked();
}

void VexaFeatureDrawWidget::onBatchClicked()
{
    m_nState = STATE_BATCH;
    emit SigButtonClicked();
}

void VexaFeatureDrawWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
}

void VexaFeatureDrawWidget::retranslate()
{
    m_pDrawButton->setText(
        QCoreApplication::translate("QFeatureDrawWidget", "lang_qfeaturedrawwidget_draw"));
    m_pBatchButton->setText(
        QCoreApplication::translate("QFeatureDrawWidget", "lang_qfeaturedrawwidget_batch"));
}
