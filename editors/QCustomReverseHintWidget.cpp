#include "editors/QCustomReverseHintWidget.h"

#include "ControlKit/CustomLabel.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QEvent>

#include <iterator>

namespace {

constexpr char CONTEXT[] = "QCustomReverseHintWidget";

struct HintTexts
{
    const char *text; ///< key; also the tool tip of the text
    const char *iconToolTip; ///< key
    const char *textCn; ///< fixed text of "CH", null where the key serves
    const char *iconToolTipCn;
};

constexpr char MIRROR_TOOL_TIP_CN[] =
    "图像采集状态下此参数无\n法设置，点击停止采集按\n钮后设置此参数";
constexpr char PHARMACODE_TOOL_TIP_CN[] = "Pharmacode码与其他一维码互斥";

const HintTexts *hintTexts(int kind)
{
    static const HintTexts texts[] = {
        {QT_TRANSLATE_NOOP("QCustomReverseHintWidget", "lang_qcustomreversehintwidget_xmirror"),
         QT_TRANSLATE_NOOP("QCustomReverseHintWidget", "lang_qcustomreversehintwidget_tooltip"),
         "X镜像", MIRROR_TOOL_TIP_CN},
        {QT_TRANSLATE_NOOP("QCustomReverseHintWidget", "lang_qcustomreversehintwidget_ymirror"),
         QT_TRANSLATE_NOOP("QCustomReverseHintWidget", "lang_qcustomreversehintwidget_tooltip"),
         "Y镜像", MIRROR_TOOL_TIP_CN},
        {QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_pharmacodeonetrack"),
         QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_pharmacodetooltip"),
         "Pharmacode One Track码", PHARMACODE_TOOL_TIP_CN},
        {QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_pharmacodetwotrack"),
         QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_pharmacodetooltip"),
         "Pharmacode Two Track码", PHARMACODE_TOOL_TIP_CN},
        {QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_quality1denable"),
         QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_qualityenabletooltip"),
         nullptr, nullptr},
        {QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_qualityenable"),
         QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_qualityenabletooltip"),
         nullptr, nullptr},
        {QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_codetrigenable"),
         QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_codetrigenabletooltip"),
         nullptr, nullptr},
        {QT_TRANSLATE_NOOP("QCustomReverseHintWidget", "lang_qcustomreversehintwidget_hdrenable"),
         QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_hdrenabletooltip"),
         nullptr, nullptr},
        {QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_selftriggerperiod"),
         QT_TRANSLATE_NOOP("QCustomReverseHintWidget",
                           "lang_qcustomreversehintwidget_selftriggerperiodtooltip"),
         nullptr, nullptr},
    };
    return kind >= 0 && kind < int(std::size(texts)) ? &texts[kind] : nullptr;
}

} // namespace

QCustomReverseHintWidget::QCustomReverseHintWidget(QWidget *parent, int kind)
    : CustomWidget(parent)
    , iconLabel(new CustomLabel(this))
    , textLabel(new CustomLabel(this))
    , kind(kind)
{
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(textLabel);
    layout->addSpacing(5);
    layout->addWidget(iconLabel);
    layout->addStretch();

    iconLabel->setFixedSize(20, 20);
    iconLabel->cSetBackgroundImage(
        QStringLiteral(":/DeviceTreeModule/button/ic_toast_notice_normal.svg"),
        Custom::STATUS_NORMAL);
    iconLabel->cSetBackgroundImage(
        QStringLiteral(":/DeviceTreeModule/button/ic_toast_notice_hover.svg"),
        Custom::STATUS_HOVER);
    textLabel->cSetFontFamily(Custom::globalFontFamily());
    textLabel->cSetFontSize(14);
    textLabel->cSetFontColor(QColor(0xD1, 0xD1, 0xD1), Custom::STATUS_NORMAL);
    textLabel->cSetFontColor(QColor(0xFC, 0xFC, 0xFA), Custom::STATUS_HOVER);
    textLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    translateTexts();
}

void QCustomReverseHintWidget::setLanguage(const QString &language)
{
    translateTexts();
    const HintTexts *const texts = hintTexts(kind);
    if (language == QLatin1String("CH") && texts && texts->textCn) {
        textLabel->setText(QString::fromUtf8(texts->textCn));
        textLabel->setToolTip(textLabel->text());
        iconLabel->setToolTip(QString::fromUtf8(texts->iconToolTipCn));
    }
}

void QCustomReverseHintWidget::changeEvent(QEvent *event)
{
    CustomWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        translateTexts();
    }
}

void QCustomReverseHintWidget::translateTexts()
{
    const HintTexts *const texts = hintTexts(kind);
    const QString text = texts ? QCoreApplication::translate(CONTEXT, texts->text) : QString();
    textLabel->setText(text);
    textLabel->setToolTip(text);
    iconLabel->setToolTip(texts ? QCoreApplication::translate(CONTEXT, texts->iconToolTip)
                                : QString());
}
