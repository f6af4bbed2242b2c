#include "host/workbench/DeviceListPanel.h"

#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomLabel.h"
#include "ControlKit/CustomPushButton.h"
#include "host/workbench/WorkbenchTexts.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { COLUMN_DEVICE, COLUMN_STATE, COLUMN_COUNT };
enum Role { ROLE_ID = Qt::UserRole, ROLE_STATE };

constexpr int BUTTON_STYLE = 2;
constexpr int STATE_COLUMN_WIDTH = 92;

struct StateRow
{
    DeviceListPanel::DeviceState state;
    const char *textKey;
    const char *colour;
    bool canOpen;
    bool canClose;
    bool canStart;
    bool canStop;
};

const StateRow &rowOf(DeviceListPanel::DeviceState state)
{
    using State = DeviceListPanel::DeviceState;
    static const StateRow TABLE[] = {
        {State::Available, "lang_workbench_state_available", "#8C8C8C", true, false, false, false},
        {State::Opening, "lang_workbench_state_opening", "#D1D1D1", false, true, false, false},
        {State::Open, "lang_workbench_state_open", "#F2F2F2", false, true, true, false},
        {State::Grabbing, "lang_workbench_state_grabbing", "#F76900", false, true, false, true},
        {State::Lost, "lang_workbench_state_lost", "#FF5A4F", true, false, false, false}};
    for (const StateRow &row : TABLE) {
        if (row.state == state) {
            return row;
        }
    }
    return TABLE[0];
}

DeviceListPanel::DeviceState stateOf(const QTreeWidgetItem *item)
{
    return static_cast<DeviceListPanel::DeviceState>(item->data(COLUMN_DEVICE, ROLE_STATE).toInt());
}

void showState(QTreeWidgetItem *item)
{
    const StateRow &row = rowOf(stateOf(item));
    item->setText(COLUMN_STATE, workbenchText(row.textKey));
    item->setForeground(COLUMN_STATE, QColor(QLatin1String(row.colour)));
}

} // namespace

DeviceListPanel::DeviceListPanel(QWidget *parent)
    : CustomWidget(parent)
    , m_pTitle(new CustomLabel(this))
    , m_pList(new QTreeWidget(this))
    , m_pOpenButton(makeButton("OpenButton", &DeviceListPanel::openRequested))
    , m_pCloseButton(makeButton("CloseButton", &DeviceListPanel::closeRequested))
    , m_pStartButton(makeButton("StartButton", &DeviceListPanel::startRequested))
    , m_pStopButton(makeButton("StopButton", &DeviceListPanel::stopRequested))
    , m_pLanguageTitle(new CustomLabel(this))
    , m_pLanguageCombo(new CustomComboBox(2, 0, this))
{
    m_pTitle->cSetFontSize(14);
    m_pLanguageTitle->cSetFontSize(14);
    m_pLanguageTitle->setBuddy(m_pLanguageCombo);
    m_pList->setObjectName(QStringLiteral("DeviceList"));
    m_pList->setColumnCount(COLUMN_COUNT);
    m_pList->setRootIsDecorated(false);
    m_pList->setUniformRowHeights(true);
    m_pList->header()->setStretchLastSection(false);
    m_pList->header()->setSectionResizeMode(COLUMN_DEVICE, QHeaderView::Stretch);
    m_pList->header()->setSectionResizeMode(COLUMN_STATE, QHeaderView::Fixed);
    m_pList->header()->resizeSection(COLUMN_STATE, STATE_COLUMN_WIDTH);
    // Languages name themselves, whatever the language of the program is.
    m_pLanguageCombo->setObjectName(QStringLiteral("LanguageCombo"));
    m_pLanguageCombo->addItem(QStringLiteral("English"), QStringLiteral("ENG"));
    m_pLanguageCombo->addItem(QString::fromUtf8("\u4E2D\u6587"), QStringLiteral("CH"));

    auto *buttons = new QGridLayout;
    buttons->setSpacing(8);
    buttons->addWidget(m_pOpenButton, 0, 0);
    buttons->addWidget(m_pCloseButton, 0, 1);
    buttons->addWidget(m_pStartButton, 1, 0);
    buttons->addWidget(m_pStopButton, 1, 1);
    auto *language = new QHBoxLayout;
    language->addWidget(m_pLanguageTitle);
    language->addWidget(m_pLanguageCombo, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(12, 16, 12, 12);
    column->setSpacing(10);
    column->addWidget(m_pTitle);
    column->addWidget(m_pList, 1);
    column->addLayout(buttons);
    column->addLayout(language);

    connect(m_pList, &QTreeWidget::currentItemChanged, this, [this] {
        updateButtons();
        emit deviceSelected(currentDevice());
    });
    connect(m_pList, &QTreeWidget::itemActivated, this, [this](const QTreeWidgetItem *item) {
        if (rowOf(stateOf(item)).canOpen) {
            emit openRequested(item->data(COLUMN_DEVICE, ROLE_ID).toString());
        }
    });
    connect(m_pLanguageCombo, QOverload<int>::of(&QComboBox::activated), this,
            [this](int row) { emit languageChosen(m_pLanguageCombo->itemData(row).toString()); });
    retranslate();
    updateButtons();
}

DeviceListPanel::~DeviceListPanel() = default;

CustomPushButton *DeviceListPanel::makeButton(const char *objectName,
                                              void (DeviceListPanel::*request)(QString))
{
    auto *button = new CustomPushButton(BUTTON_STYLE, this);
    button->setObjectName(QLatin1String(objectName));
    button->setFixedHeight(32);
    connect(button, &QPushButton::clicked, this, [this, request] {
        if (!currentDevice().isEmpty()) {
            emit(this->*request)(currentDevice());
        }
    });
    return button;
}

void DeviceListPanel::addDevice(const QString &id, const QString &transport, const QString &model)
{
    auto *item = new QTreeWidgetItem(m_pList);
    item->setText(COLUMN_DEVICE, id);
    item->setToolTip(COLUMN_DEVICE, QStringLiteral("%1\n%2, %3").arg(id, transport, model));
    item->setData(COLUMN_DEVICE, ROLE_ID, id);
    item->setData(COLUMN_DEVICE, ROLE_STATE, static_cast<int>(DeviceState::Available));
    showState(item);
    if (!m_pList->currentItem()) {
        m_pList->setCurrentItem(item);
    }
}

QTreeWidgetItem *DeviceListPanel::itemOf(const QString &id) const
{
    for (int row = 0; row < m_pList->topLevelItemCount(); ++row) {
        QTreeWidgetItem *item = m_pList->topLevelItem(row);
        if (item->data(COLUMN_DEVICE, ROLE_ID).toString() == id) {
            return item;
        }
    }
    return nullptr;
}

void DeviceListPanel::setDeviceState(const QString &id, DeviceState state)
{
    if (QTreeWidgetItem *item = itemOf(id)) {
        item->setData(COLUMN_DEVICE, ROLE_STATE, static_cast<int>(state));
        showState(item);
        updateButtons();
    }
}

QString DeviceListPanel::currentDevice() const
{
    const QTreeWidgetItem *item = m_pList->currentItem();
    return item ? item->data(COLUMN_DEVICE, ROLE_ID).toString() : QString();
}

void DeviceListPanel::setCurrentDevice(const QString &id)
{
    m_pList->setCurrentItem(itemOf(id));
}

void DeviceListPanel::setLanguage(const QString &language)
{
    const QSignalBlocker blocker(m_pLanguageCombo);
    m_pLanguageCombo->setCurrentIndex(m_pLanguageCombo->findData(language));
}

void DeviceListPanel::updateButtons()
{
    const QTreeWidgetItem *item = m_pList->currentItem();
    const StateRow &row = rowOf(item ? stateOf(item) : DeviceState::Available);
    m_pOpenButton->setEnabled(item && row.canOpen);
    m_pCloseButton->setEnabled(item && row.canClose);
    m_pStartButton->setEnabled(item && row.canStart);
    m_pStopButton->setEnabled(item && row.canStop);
}

void DeviceListPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    CustomWidget::changeEvent(event);
}

void DeviceListPanel::retranslate()
{
    m_pTitle->setText(workbenchText("lang_workbench_devices"));
    m_pList->setAccessibleName(workbenchText("lang_workbench_devices"));
    m_pList->setHeaderLabels(
        {workbenchText("lang_workbench_device"), workbenchText("lang_workbench_state")});
    m_pOpenButton->setText(workbenchText("lang_workbench_open"));
    m_pCloseButton->setText(workbenchText("lang_workbench_close"));
    m_pStartButton->setText(workbenchText("lang_workbench_start"));
    m_pStopButton->setText(workbenchText("lang_workbench_stop"));
    m_pLanguageTitle->setText(workbenchText("lang_workbench_language"));
    m_pLanguageCombo->setAccessibleName(workbenchText("lang_workbench_language"));
    for (int row = 0; row < m_pList->topLevelItemCount(); ++row) {
        showState(m_pList->topLevelItem(row));
    }
}
