#include "shell/VexaFeatureToolBar.h"

#include "ControlKit/CustomPushButton.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QLocalCfg.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QTimer>

#include <new>

namespace {

constexpr int BAR_HEIGHT = 32;
constexpr int BUTTON_SPACING = 8;
constexpr int REFRESH_PAUSE_MS = 1000;
constexpr int LIVE_CAMERA = 1;

const char *const KEY_EXPAND = "lang_qfeaturetoolbar_expand";
const char *const KEY_FOLD = "lang_qfeaturetoolbar_fold";
const char *const ICON_EXPAND = ":/FeatureTreeModule/featuretree/icon_retract_normal.svg";
const char *const ICON_FOLD = ":/FeatureTreeModule/featuretree/icon_folder.svg";

struct ButtonRow
{
    int id;
    const char *textKey;
    const char *icon;
    const char *disabledIcon; ///< null: as the normal state
    int widthChinese;
    int widthOther;
};

/// In the order on screen.
const ButtonRow BUTTONS[] = {
    {VexaFeatureToolBar::BUTTON_REFRESH, "lang_qfeaturetoolbar_featurerefresh",
     ":/FeatureTreeModule/featuretree/icon_refresh_normal.svg", nullptr, 76, 95},
    {VexaFeatureToolBar::BUTTON_EXPAND, KEY_EXPAND, ICON_EXPAND, nullptr, 104, 120},
    {VexaFeatureToolBar::BUTTON_IMPORT, "lang_qfeaturetoolbar_featureimport",
     ":/FeatureTreeModule/featuretree/icon_file_import_normal.svg",
     ":/FeatureTreeModule/featuretree/icon_file_import_disable.svg", 76, 90},
    {VexaFeatureToolBar::BUTTON_EXPORT, "lang_qfeaturetoolbar_featureexport",
     ":/FeatureTreeModule/featuretree/icon_file_export_normal.svg",
     ":/FeatureTreeModule/featuretree/icon_file_export_disable.svg", 76, 90},
    {VexaFeatureToolBar::BUTTON_FILE_ACCESS, "lang_qfeaturetoolbar_fileaccess",
     ":/FeatureTreeModule/featuretree/icon_save_normal.svg",
     ":/FeatureTreeModule/featuretree/icon_save_disable.svg", 104, 115},
};

void setText(CustomPushButton *button, const char *key)
{
    const QString text = QCoreApplication::translate("QFeatureToolBar", key);
    button->setText(text);
    button->setToolTip(text);
}

CustomPushButton *makeButton(const ButtonRow &row, QWidget *parent)
{
    auto *button = new CustomPushButton(2, parent);
    setText(button, row.textKey);
    button->setFixedSize(row.widthChinese, BAR_HEIGHT);
    button->cSetFontSize(14);
    for (const Custom::ItemStatus status :
         {Custom::STATUS_NORMAL, Custom::STATUS_HOVER, Custom::STATUS_PRESSED}) {
        button->cSetFontColor(QColor(QStringLiteral("#FAFAFA")), status);
    }
    button->cSetFontColor(QColor(QStringLiteral("#7F8287")), Custom::STATUS_DISABLED);
    button->cSetBackgroundColor(QColor(QStringLiteral("#656B78")), Custom::STATUS_NORMAL);
    button->cSetBackgroundColor(QColor(QStringLiteral("#747B8A")), Custom::STATUS_HOVER);
    button->cSetBackgroundColor(QColor(QStringLiteral("#545963")), Custom::STATUS_PRESSED);
    button->cSetBackgroundColor(QColor(QStringLiteral("#4B505A")), Custom::STATUS_DISABLED);
    button->cSetBorderColor(QColor(QStringLiteral("#33A6B2C9")));
    button->cSetBorderWidth(1);
    button->cSetBorderRadius(2);
    button->cSetIcon(QString::fromLatin1(row.icon));
    if (row.disabledIcon) {
        button->cSetIcon(QString::fromLatin1(row.disabledIcon), Custom::STATUS_DISABLED);
    }
    button->cSetIconAlign(Qt::AlignLeft, QSize(20, 20));
    button->setFixedHeight(BAR_HEIGHT);
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    return button;
}

} // namespace

VexaFeatureToolBar::VexaFeatureToolBar(QWidget *parent)
    : CustomWidget(parent)
{
    setFixedHeight(BAR_HEIGHT);
    createButtons();
    const bool connected = connect(m_pButtonGroup, &QButtonGroup::idClicked, this,
                                   &VexaFeatureToolBar::OnSigToolBarBtnClicked);
    if (!connected) {
        throw std::bad_alloc();
    }
    layoutButtons();
    applyLanguage();
}

VexaFeatureToolBar::~VexaFeatureToolBar() = default;

void VexaFeatureToolBar::createButtons()
{
    m_pButtonGroup = new QButtonGroup(this);
    m_pButtonGroup->setExclusive(false);
    for (const ButtonRow &row : BUTTONS) {
        m_pButtonGroup->addButton(makeButton(row, this), row.id);
    }
    m_pExpandButton = button(BUTTON_EXPAND);
    m_pImportButton = button(BUTTON_IMPORT);
    m_pExportButton = button(BUTTON_EXPORT);
    m_pFileAccessButton = button(BUTTON_FILE_ACCESS);
    m_pRefreshButton = button(BUTTON_REFRESH);
}

void VexaFeatureToolBar::layoutButtons()
{
    m_pLayout = new QHBoxLayout(this);
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLayout->setSpacing(0);
    for (const ButtonRow &row : BUTTONS) {
        m_pLayout->addWidget(button(row.id));
        m_pLayout->addSpacing(BUTTON_SPACING);
    }
    m_pLayout->addStretch();
}

CustomPushButton *VexaFeatureToolBar::button(int id) const
{
    return static_cast<CustomPushButton *>(m_pButtonGroup->button(id));
}

void VexaFeatureToolBar::setExpanded()
{
    m_bExpanded = true;
    applyExpandState();
}

void VexaFeatureToolBar::applyExpandState()
{
    setText(m_pExpandButton, m_bExpanded ? KEY_FOLD : KEY_EXPAND);
    m_pExpandButton->cSetIcon(QString::fromLatin1(m_bExpanded ? ICON_FOLD : ICON_EXPAND));
}

void VexaFeatureToolBar::applyRefreshState()
{
    m_pRefreshButton->setEnabled(m_bRefreshAllowed && !m_bRefreshPaused);
}

void VexaFeatureToolBar::applyLanguage()
{
    const bool chinese =
        QLocalCfg::Instance() && QLocalCfg::Instance()->GetPropertyLan() == QLatin1String("CH");
    for (const ButtonRow &row : BUTTONS) {
        setText(button(row.id), row.textKey);
        button(row.id)->setFixedWidth(chinese ? row.widthChinese : row.widthOther);
    }
    applyExpandState();
}

void VexaFeatureToolBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange && m_pRefreshButton) {
        applyLanguage();
    }
    CustomWidget::changeEvent(event);
}

bool VexaFeatureToolBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_pExpandButton && event->type() == QEvent::MouseButtonDblClick) {
        return true;
    }
    return CustomWidget::eventFilter(watched, event);
}

void VexaFeatureToolBar::OnSigToolBarBtnClicked(int nIndex)
{
    if (nIndex == BUTTON_EXPAND) {
        m_bExpanded = !m_bExpanded;
        applyExpandState();
    } else if (nIndex == BUTTON_REFRESH) {
        m_bRefreshPaused = true;
        applyRefreshState();
        QTimer::singleShot(REFRESH_PAUSE_MS, this, [this] {
            m_bRefreshPaused = false;
            applyRefreshState();
        });
    }
    emit SigToolBarBtnClicked(nIndex);
}

void VexaFeatureToolBar::UpdateToolBarBtn(int state, int cameraId, bool busy)
{
    const auto enableAll = [this](bool enable) {
        for (const ButtonRow &row : BUTTONS) {
            button(row.id)->setEnabled(enable);
        }
        m_bRefreshAllowed = enable;
        applyRefreshState();
    };
    const auto enableFiles = [this](bool enable) {
        for (CustomPushButton *fileButton :
             {m_pImportButton, m_pExportButton, m_pFileAccessButton}) {
            fileButton->setEnabled(enable);
        }
    };

    if (state != LIVE_CAMERA) {
        enableAll(false);
        return;
    }
    QTaskManager *manager = QTaskManager::Instance();
    if (!manager) {
        return;
    }
    QCameraBasicTask *basicTask = manager->GetTaskByIDEx(cameraId);
    QCameraTask *task = basicTask ? basicTask->_CameraTak() : nullptr;
    if (!task) {
        enableAll(false);
        return;
    }
    switch (task->GetCameraState()) {
    case TASK_CAMERA_CLOSED:
        enableAll(false);
        return;
    case TASK_CAMERA_OPEN:
        enableAll(true);
        break;
    case TASK_CAMERA_GRABBING:
        m_pExpandButton->setEnabled(true);
        m_bRefreshAllowed = true;
        applyRefreshState();
        enableFiles(false);
        break;
    }
    if (busy) {
        enableFiles(false);
    }
}
