#include "editors/VexaScreenSelectWidget.h"

#include "DeviceTaskModule/QCameraTask.h"
#include "editors/EditorHost.h"
#include "editors/VectorPicture.h"
#include "model/CustomItemValues.h"
#include "model/EnumRecord.h"
#include "tree/CameraLookup.h"
#include "tree/VexaFeatureTree.h"

#include <QCoreApplication>
#include <QDebug>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStyleOptionFocusRect>

namespace {

constexpr int ARROW_WIDTH = 34; // pixels
constexpr int EDITOR_WIDTH = 300; // pixels
constexpr int FIRST_PAGE = 1;
constexpr int LAST_PAGE = 3;
constexpr double DIMMED = 0.4; // opacity of an editor that takes no input
const QSize PICTURE_LIMIT(200, 100);

/// Where the device writes its own words, each page has a picture in its two languages.
struct PageRow
{
    const char *name;
    const char *text; ///< key
};

bool isPage(int nPage)
{
    return nPage >= FIRST_PAGE && nPage <= LAST_PAGE;
}

const PageRow &pageRow(int nPage)
{
    static const PageRow rows[] = {
        {"code_score",
         QT_TRANSLATE_NOOP("VexaScreenSelectWidget", "lang_vexascreenselectwidget_codescore")},
        {"code_num",
         QT_TRANSLATE_NOOP("VexaScreenSelectWidget", "lang_vexascreenselectwidget_codenumber")},
        {"decode_time",
         QT_TRANSLATE_NOOP("VexaScreenSelectWidget", "lang_vexascreenselectwidget_decodetime")},
    };
    return rows[qBound(FIRST_PAGE, nPage, LAST_PAGE) - FIRST_PAGE];
}

int readScreenLanguage(long int lCameraID)
{
    QCameraTask *const pTask = cameraTaskOf(lCameraID);
    const EnumRecord record;
    const bool bRead = pTask && record
        && pTask->GetEnumerationValue(QStringLiteral("ScreenLanguage"), record.get(), nullptr,
                                      false, false);
    return bRead ? int(record->value) : 0;
}

} // namespace

VexaScreenSelectWidget::VexaScreenSelectWidget(CTreeScreenSelectItemValue *value, QWidget *parent)
    : CustomWidget(parent)
    , m_pValue(value)
    , m_lCameraID(value->m_nCameraID)
    , m_nPage(value->m_nValue)
    , m_nScreenLanguage(readScreenLanguage(m_lCameraID))
{
    setAttribute(Qt::WA_MouseTracking);
    setObjectName(QStringLiteral("VexaScreenSelectWidget"));
    setFixedWidth(EDITOR_WIDTH);
    setFocusPolicy(Qt::StrongFocus);
    nameForReaders();
}

void VexaScreenSelectWidget::setPage(int page)
{
    m_nPage = page;
    nameForReaders();
    update();
}

void VexaScreenSelectWidget::OnPreOrNextBtnClicked()
{
}

void VexaScreenSelectWidget::step(int direction)
{
    int nPage = m_nPage + direction;
    nPage = nPage > LAST_PAGE ? FIRST_PAGE : nPage < FIRST_PAGE ? LAST_PAGE : nPage;
    setPage(nPage);
    const QPointer<VexaScreenSelectWidget> guard(this);
    VexaFeatureTree *const pTree = EditorHost::featureTree(m_lCameraID);
    const bool bWritten = pTree
        && pTree->setFeatureValue(QStringLiteral("Enumeration"), QStringLiteral("ScreenHomepage"),
                                  nPage);
    // The row may have gone meanwhile; its editor is hidden then, and deleted later.
    if (guard && !isHidden()) {
        if (bWritten) {
            m_pValue->m_nValue = nPage; // a refill ahead of the refresh must not turn back
        } else {
            setPage(m_pValue->m_nValue);
        }
    }
    EditorHost::markCameraModified();
}

void VexaScreenSelectWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        CustomWidget::mousePressEvent(event);
        return;
    }
    const int nFromRight = pictureSize().width() + 2 * ARROW_WIDTH - event->pos().x();
    const QPointer<VexaScreenSelectWidget> guard(this);
    if (event->pos().x() > 0 && event->pos().x() < ARROW_WIDTH) {
        step(-1);
    } else if (nFromRight > 0 && nFromRight < ARROW_WIDTH) {
        step(1);
    }
    if (guard) {
        CustomWidget::leaveEvent(event);
    }
}

void VexaScreenSelectWidget::mouseMoveEvent(QMouseEvent *event)
{
    const int nX = event->pos().x();
    const int nFromRight = pictureSize().width() + 2 * ARROW_WIDTH - nX;
    m_bOverBack = nX > 0 && nX < ARROW_WIDTH;
    m_bOverForward = nFromRight - nX < ARROW_WIDTH && nFromRight > 0; // wider than its click zone
    update();
}

void VexaScreenSelectWidget::leaveEvent(QEvent *event)
{
    m_bOverBack = false;
    m_bOverForward = false;
    update();
    CustomWidget::leaveEvent(event);
}

void VexaScreenSelectWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers() & ~Qt::KeypadModifier) {
        CustomWidget::keyPressEvent(event);
    } else if (event->key() == Qt::Key_Left) {
        step(-1);
    } else if (event->key() == Qt::Key_Right) {
        step(1);
    } else {
        CustomWidget::keyPressEvent(event);
    }
}

void VexaScreenSelectWidget::changeEvent(QEvent *event)
{
    CustomWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        nameForReaders();
    } else if (event->type() == QEvent::EnabledChange) {
        m_bOverBack = m_bOverForward = false;
        update();
    }
}

QSize VexaScreenSelectWidget::sizeHint() const
{
    return {EDITOR_WIDTH, PICTURE_LIMIT.height()};
}

QString VexaScreenSelectWidget::picturePath() const
{
    return QStringLiteral(":/Vexa/Screen/%1%2.png")
        .arg(QLatin1String(pageRow(m_nPage).name),
             QLatin1String(m_nScreenLanguage == 0 ? "" : "_en"));
}

QSize VexaScreenSelectWidget::pictureSize() const
{
    return VectorPicture::size(picturePath()).scaled(PICTURE_LIMIT, Qt::KeepAspectRatio);
}

void VexaScreenSelectWidget::paintEvent(QPaintEvent *event)
{
    CustomWidget::paintEvent(event);
    qInfo() << "Current Value " << m_nPage;
    QPainter painter(this);
    painter.setOpacity(isEnabled() ? 1.0 : DIMMED);
    const QSize picture = pictureSize();
    if (isPage(m_nPage)) {
        painter.drawPixmap(ARROW_WIDTH, 0,
                           VectorPicture::pixmap(picturePath(), picture, devicePixelRatioF()));
    }
    const struct
    {
        int nX;
        const char *name;
        bool bOver;
    } arrows[] = {{0, "pre", m_bOverBack}, {ARROW_WIDTH + picture.width(), "next", m_bOverForward}};
    for (const auto &arrow : arrows) {
        const QString strPath =
            QStringLiteral(":/Vexa/btn/%1%2.png")
                .arg(QLatin1String(arrow.name), QLatin1String(arrow.bOver ? "_sel" : ""));
        painter.drawPixmap(
            arrow.nX, 0,
            VectorPicture::pixmap(strPath, QSize(ARROW_WIDTH, height()), devicePixelRatioF()));
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = QRect(ARROW_WIDTH, 0, picture.width(), qMin(picture.height(), height()));
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void VexaScreenSelectWidget::nameForReaders()
{
    setAccessibleName(isPage(m_nPage) ? QCoreApplication::translate("VexaScreenSelectWidget",
                                                                    pageRow(m_nPage).text)
                                      : QString());
}
