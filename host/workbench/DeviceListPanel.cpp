#include "host/workbench/DeviceListPanel.h"

#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomLabel.h"
#include "ControlKit/CustomPushButton.h"
#include "host/workbench/WorkbenchTexts.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { COLUMN_DEVICE, COLUMN_STATE, COLUMN_COUNT };
enum Role { ROLE_ID = Qt::UserRole, ROLE_STATE, ROLE_GROUP, ROLE_FACTS, ROLE_NAME, ROLE_MODIFIED };

constexpr int BUTTON_STYLE = 2;
constexpr int BUTTON_HEIGHT = 32;
constexpr int DOT_SIZE = 8;
/// All around a state's text and its dot.
constexpr int STATE_MARGIN = DOT_SIZE + 36;

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

using State = DeviceListPanel::DeviceState;

constexpr StateRow STATES[] = {
    {State::Available, "lang_workbench_state_available", "#8C8C8C", true, false, false, false},
    {State::Opening, "lang_workbench_state_opening", "#D1D1D1", false, true, false, false},
    {State::Open, "lang_workbench_state_open", "#F2F2F2", false, true, true, false},
    {State::Starting, "lang_workbench_state_starting", "#FF9A4D", false, true, false, false},
    {State::Grabbing, "lang_workbench_state_grabbing", "#FF9A4D", false, true, false, true},
    {State::Stopping, "lang_workbench_state_stopping", "#FF9A4D", false, true, false, false},
    {State::ReadOnly, "lang_workbench_state_readonly", "#7FB6EC", false, true, false, false},
    {State::NotResponding, "lang_workbench_state_notresponding", "#FFC04D", false, true, false,
     false},
    {State::Lost, "lang_workbench_state_lost", "#FF7A70", false, true, false, false},
    {State::Gone, "lang_workbench_state_lost", "#FF7A70", true, false, false, false}};

const StateRow &rowOf(State state)
{
    for (const StateRow &row : STATES) {
        if (row.state == state) {
            return row;
        }
    }
    return STATES[0];
}

const char *groupKey(int group)
{
    static const struct
    {
        DeviceListPanel::DeviceGroup group;
        const char *textKey;
    } TABLE[] = {{DeviceListPanel::DeviceGroup::Simulated, "lang_workbench_group_simulated"},
                 {DeviceListPanel::DeviceGroup::Gige, "lang_workbench_group_gige"},
                 {DeviceListPanel::DeviceGroup::Usb3, "lang_workbench_group_usb3"}};
    for (const auto &row : TABLE) {
        if (static_cast<int>(row.group) == group) {
            return row.textKey;
        }
    }
    return TABLE[0].textKey;
}

State stateOf(const QTreeWidgetItem *item)
{
    return static_cast<State>(item->data(COLUMN_DEVICE, ROLE_STATE).toInt());
}

/// The text of the selected row has the colour of the selection: a dot keeps that of the state.
QIcon dot(const QColor &colour)
{
    constexpr int SCALE = 4; // crisp on every monitor
    QPixmap pixmap(DOT_SIZE * SCALE, DOT_SIZE * SCALE);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(pixmap.rect());
    painter.end();
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected);
    return icon;
}

void showTexts(QTreeWidgetItem *item)
{
    if (item->data(COLUMN_DEVICE, ROLE_ID).toString().isEmpty()) {
        item->setText(COLUMN_DEVICE,
                      workbenchText(groupKey(item->data(COLUMN_DEVICE, ROLE_GROUP).toInt())));
        return;
    }
    const bool modified = item->data(COLUMN_DEVICE, ROLE_MODIFIED).toBool();
    const QString name = item->data(COLUMN_DEVICE, ROLE_NAME).toString();
    const QString id = item->data(COLUMN_DEVICE, ROLE_ID).toString();
    QStringList tip = {id, item->data(COLUMN_DEVICE, ROLE_FACTS).toString()};
    tip += name.isEmpty() ? QStringList() : QStringList(name);
    tip += modified ? QStringList(workbenchText("lang_workbench_modified_tip")) : QStringList();
    item->setText(COLUMN_DEVICE,
                  (modified ? id + QStringLiteral(" *") : id)
                      + (name.isEmpty() || name == id ? QString() : QLatin1Char('\n') + name));
    item->setToolTip(COLUMN_DEVICE, tip.join(QLatin1Char('\n')));
    const StateRow &row = rowOf(stateOf(item));
    item->setText(COLUMN_STATE, workbenchText(row.textKey));
    item->setForeground(COLUMN_STATE, QColor(QLatin1String(row.colour)));
    item->setIcon(COLUMN_STATE, dot(QColor(QLatin1String(row.colour))));
}

} // namespace

DeviceListPanel::DeviceListPanel(QWidget *parent)
    : CustomWidget(parent)
    , m_pTitle(new CustomLabel(this))
    , m_pList(new QTreeWidget(this))
    , m_pDiscoverButton(new CustomPushButton(BUTTON_STYLE, this))
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
    m_pList->setAllColumnsShowFocus(true);
    m_pList->setIconSize({DOT_SIZE, DOT_SIZE});
    m_pList->header()->setStretchLastSection(false);
    m_pList->header()->setSectionResizeMode(COLUMN_DEVICE, QHeaderView::Stretch);
    m_pList->header()->setSectionResizeMode(COLUMN_STATE, QHeaderView::Fixed);
    m_pDiscoverButton->setObjectName(QStringLiteral("DiscoverButton"));
    m_pDiscoverButton->setFixedHeight(BUTTON_HEIGHT);
    // Languages name themselves, whatever the language of the program is.
    m_pLanguageCombo->setObjectName(QStringLiteral("LanguageCombo"));
    m_pLanguageCombo->addItem(QStringLiteral("English"), QStringLiteral("ENG"));
    m_pLanguageCombo->addItem(QString::fromUtf8("\u4E2D\u6587"), QStringLiteral("CH"));

    auto *heading = new QHBoxLayout;
    heading->addWidget(m_pTitle, 1);
    heading->addWidget(m_pDiscoverButton);
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
    column->addLayout(heading);
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
    connect(m_pDiscoverButton, &QPushButton::clicked, this, &DeviceListPanel::discoverRequested);
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
    button->setFixedHeight(BUTTON_HEIGHT);
    connect(button, &QPushButton::clicked, this, [this, request] {
        if (!currentDevice().isEmpty()) {
            emit(this->*request)(currentDevice());
        }
    });
    return button;
}

int DeviceListPanel::endOfGroup(DeviceGroup group)
{
    int row = 0;
    bool hasHeading = false;
    for (; row < m_pList->topLevelItemCount(); ++row) {
        const int found = m_pList->topLevelItem(row)->data(COLUMN_DEVICE, ROLE_GROUP).toInt();
        hasHeading = hasHeading || found == static_cast<int>(group);
        if (found > static_cast<int>(group)) {
            break;
        }
    }
    if (hasHeading) {
        return row;
    }
    // Disabled, a heading is neither clicked nor reached with the keyboard. Children of it would be disabled too,
    // so the list is flat.
    auto *heading = new QTreeWidgetItem;
    m_pList->insertTopLevelItem(row, heading);
    heading->setFlags(Qt::NoItemFlags);
    heading->setData(COLUMN_DEVICE, ROLE_GROUP, static_cast<int>(group));
    heading->setForeground(COLUMN_DEVICE, QColor(QStringLiteral("#9A9DA3")));
    heading->setFirstColumnSpanned(true);
    showTexts(heading);
    return row + 1;
}

void DeviceListPanel::addDevice(DeviceGroup group, const QString &id, const QString &transport,
                                const QString &model)
{
    auto *item = new QTreeWidgetItem;
    item->setData(COLUMN_DEVICE, ROLE_FACTS, QStringLiteral("%1, %2").arg(transport, model));
    item->setData(COLUMN_DEVICE, ROLE_ID, id);
    item->setData(COLUMN_DEVICE, ROLE_GROUP, static_cast<int>(group));
    item->setData(COLUMN_DEVICE, ROLE_STATE, static_cast<int>(DeviceState::Available));
    showTexts(item);
    m_pList->insertTopLevelItem(endOfGroup(group), item);
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
        showTexts(item);
        updateButtons();
    }
}

void DeviceListPanel::setDeviceName(const QString &id, const QString &name, bool modified)
{
    QTreeWidgetItem *item = itemOf(id);
    if (item
        && (item->data(COLUMN_DEVICE, ROLE_NAME).toString() != name
            || item->data(COLUMN_DEVICE, ROLE_MODIFIED).toBool() != modified)) {
        item->setData(COLUMN_DEVICE, ROLE_NAME, name);
        item->setData(COLUMN_DEVICE, ROLE_MODIFIED, modified);
        showTexts(item);
    }
}

QString DeviceListPanel::currentDevice() const
{
    const QTreeWidgetItem *item = m_pList->currentItem();
    return item ? item->data(COLUMN_DEVICE, ROLE_ID).toString() : QString();
}

void DeviceListPanel::setLanguage(const QString &language)
{
    const QSignalBlocker blocker(m_pLanguageCombo);
    m_pLanguageCombo->setCurrentIndex(m_pLanguageCombo->findData(language));
}

void DeviceListPanel::setSearching(bool searching)
{
    m_bSearching = searching;
    retranslate();
    updateButtons();
}

void DeviceListPanel::updateButtons()
{
    const QTreeWidgetItem *item = m_pList->currentItem();
    const StateRow &row = rowOf(item ? stateOf(item) : DeviceState::Available);
    enable(m_pDiscoverButton, !m_bSearching);
    enable(m_pOpenButton, item && row.canOpen);
    enable(m_pCloseButton, item && row.canClose);
    enable(m_pStartButton, item && row.canStart);
    enable(m_pStopButton, item && row.canStop);
}

void DeviceListPanel::enable(CustomPushButton *button, bool possible)
{
    if (!possible && window()->focusWidget() == button) {
        // Qt would hand it to the language box, where the next key changes the language.
        m_pList->setFocus();
    }
    button->setEnabled(possible);
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
    m_pDiscoverButton->setText(
        workbenchText(m_bSearching ? "lang_workbench_searching" : "lang_workbench_discover"));
    m_pDiscoverButton->setToolTip(workbenchText("lang_workbench_discover_tip"));
    m_pOpenButton->setText(workbenchText("lang_workbench_open"));
    m_pCloseButton->setText(workbenchText("lang_workbench_close"));
    m_pStartButton->setText(workbenchText("lang_workbench_start"));
    m_pStopButton->setText(workbenchText("lang_workbench_stop"));
    m_pLanguageTitle->setText(workbenchText("lang_workbench_language"));
    m_pLanguageCombo->setAccessibleName(workbenchText("lang_workbench_language"));
    for (int row = 0; row < m_pList->topLevelItemCount(); ++row) {
        showTexts(m_pList->topLevelItem(row));
    }
    fitStateColumn();
}

void DeviceListPanel::fitStateColumn()
{
    const QFontMetrics metrics = m_pList->fontMetrics();
    int width = m_pList->header()->sectionSizeHint(COLUMN_STATE);
    for (const StateRow &row : STATES) {
        width = qMax(width, metrics.horizontalAdvance(workbenchText(row.textKey)) + STATE_MARGIN);
    }
    m_pList->header()->resizeSection(COLUMN_STATE, width);
}
