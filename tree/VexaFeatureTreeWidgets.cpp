// The widgets of the page: making, layout, connections, texts.

#include "ControlKit/Custom.h"
#include "ControlKit/CustomLabel.h"
#include "ControlKit/CustomLineEdit.h"
#include "ControlKit/CustomLineWidget.h"
#include "ControlKit/CustomMenu.h"
#include "ControlKit/CustomPushButton.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/VexaPropertyComboBox.h"
#include "featurefile/VexaFeatureImExThread.h"
#include "shell/VexaFeatureToolBar.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/VexaFeatureTree.h"
#include "tree/WriteMessages.h"
#include "view/VexaFeatureTreeView.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

#include <new>

using WriteMessages::translated;

namespace {

constexpr int VIEW_WIDTH = 600;
constexpr int DESCRIPTION_WIDTH = 300;
constexpr int DESCRIPTION_TITLE_HEIGHT = 24;
constexpr int DESCRIPTION_INDENT = 20; // padding and margin of the text below it
constexpr int TOOL_ROW_HEIGHT = 29;
constexpr int USER_LEVELS = 3;

const char *const USER_LEVEL_KEYS[USER_LEVELS] = {
    "lang_qfeaturetree_guru", "lang_qfeaturetree_expert", "lang_qfeaturetree_beginner"};

CustomLineWidget *makeSeparator(QWidget *parent)
{
    auto *separator = new CustomLineWidget(parent);
    separator->cSetLineType(CustomLineWidget::LINE_HORIZONTAL);
    separator->cSetBackgroundColor(QColor(QStringLiteral("#27292c")));
    separator->setFixedHeight(1);
    return separator;
}

template<typename Layout>
Layout *makeLayout()
{
    auto *layout = new Layout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

} // namespace

bool VexaFeatureTree::InitCtrl()
{
    if (!m_pTreeView) {
        return false; // released: the view does not come back
    }
    try {
        m_pToolBar = new VexaFeatureToolBar(this);
        m_pUserLevelTitle = new CustomLabel(this);
        m_pUserLevelCombo = new VexaPropertyComboBox(this);
        m_pSearchEdit = new CustomLineEdit(2, this);
        makeFeatureFileThread();
        m_pInvalidateTimer = new QTimer(this);
        m_pRefreshTimer = new QTimer(this);
        m_pAutoTriggerTimer = new QTimer(this);
        m_pDescriptionTitle = new CustomLabel(this);
        m_pDescriptionEdit = new QTextEdit(this);
        m_pInvalidateUpdateThread = new QGetFeaturesThread(this);
        m_pLockAndRelativeThread = new QGetFeaturesThread(this);
        m_pTimerAndAllThread = new QGetFeaturesThread(this);
        m_pPollingThread = new QGetFeaturesThread(this);
        m_pPollingTimer = new QTimer(this);

        m_pSearchEdit->setObjectName(QStringLiteral("FeatureSearch"));
        m_pSearchEdit->setFixedSize(210, 32);
        m_pSearchEdit->cSetEnableSearchButton(true);
        m_pDescriptionTitle->cSetFontSize(14);
        m_pDescriptionTitle->setFixedHeight(DESCRIPTION_TITLE_HEIGHT);
        m_pDescriptionTitle->setIndent(DESCRIPTION_INDENT);
        m_pDescriptionTitle->cSetBackgroundColor(QColor(67, 68, 70));
        m_pDescriptionTitle->cSetFontColor(QColor(QStringLiteral("#8C8C8C")));
        m_pUserLevelTitle->cSetFontSize(14);
        m_pUserLevelTitle->cSetFontColor(QColor(QStringLiteral("#BEBEBE")));
        m_pUserLevelCombo->setFixedWidth(85);
        fillUserLevelCombo();

        m_pReturnButton = new CustomPushButton(2, this);
        m_pReturnButton->setFixedSize(80, 32);
        m_pReturnButton->cSetIcon(
            QStringLiteral(":/FeatureTreeModule/featuretree/icon_feature_return_normal.svg"));
        m_pPageTitle = new CustomLabel(this);
        m_pPageTitle->cSetFontSize(16);
        QFont titleFont = m_pPageTitle->font();
        titleFont.setBold(true);
        m_pPageTitle->setFont(titleFont);

        m_pContextMenu = new CustomMenu(this);
        m_pActionFavoriteAdd =
            m_pContextMenu->addAction(QString(), this, &VexaFeatureTree::OnActionFavoriteAdd);
        m_pActionFavoriteRemove =
            m_pContextMenu->addAction(QString(), this, &VexaFeatureTree::OnActionFavoriteRemove);
        m_pActionFavoriteRemoveAll =
            m_pContextMenu->addAction(QString(), this, &VexaFeatureTree::OnActionFavoriteRemoveAll);
    } catch (const std::bad_alloc &) {
        return false;
    }
    RefreshWidgetInfo();
    InitStyleSheet();
    return true;
}

void VexaFeatureTree::InitStyleSheet()
{
    m_pDescriptionEdit->setReadOnly(true);
    m_pDescriptionEdit->setStyleSheet(
        Custom::styleSheet(Custom::STYLE_TEXT_EDIT)
        + QStringLiteral("QTextEdit{background:#424750;border:0px;padding:16px; solid #626D84CC}"));
    QFont viewFont = m_pTreeView->font();
    viewFont.setFamily(Custom::globalFontFamily());
    m_pTreeView->setFont(viewFont);
}

QWidget *VexaFeatureTree::makeDescriptionColumn()
{
    auto *column = new QWidget(this);
    column->setFixedWidth(DESCRIPTION_WIDTH);
    auto *layout = makeLayout<QVBoxLayout>();
    layout->addWidget(makeSeparator(column));
    layout->addWidget(m_pDescriptionTitle);
    layout->addWidget(makeSeparator(column));
    layout->addWidget(m_pDescriptionEdit);
    column->setLayout(layout);
    return column;
}

bool VexaFeatureTree::InitLayout()
{
    auto *titleRow = makeLayout<QHBoxLayout>();
    titleRow->addWidget(m_pReturnButton);
    titleRow->addSpacing(19);
    titleRow->addWidget(m_pPageTitle);
    titleRow->addStretch();

    auto *toolRowWidget = new QWidget(this);
    auto *toolRow = makeLayout<QHBoxLayout>();
    toolRow->addSpacing(26);
    toolRow->addWidget(m_pUserLevelTitle);
    toolRow->addSpacing(8);
    toolRow->addWidget(m_pUserLevelCombo);
    toolRow->addStretch();
    toolRow->addWidget(m_pSearchEdit);
    toolRow->addSpacing(20);
    toolRowWidget->setLayout(toolRow);
    toolRowWidget->setMinimumHeight(TOOL_ROW_HEIGHT);

    m_pTreeView->setFixedWidth(VIEW_WIDTH);
    auto *contentRow = makeLayout<QHBoxLayout>();
    contentRow->addWidget(m_pTreeView);
    contentRow->addSpacing(8);
    contentRow->addWidget(makeDescriptionColumn());

    auto *page = makeLayout<QVBoxLayout>();
    page->addLayout(titleRow);
    page->addSpacing(13);
    page->addWidget(makeSeparator(this));
    page->addWidget(toolRowWidget);
    page->addWidget(m_pToolBar);
    page->addSpacing(8);
    page->addLayout(contentRow);

    auto *centred = makeLayout<QHBoxLayout>();
    centred->setContentsMargins(0, 24, 0, 0);
    centred->addStretch();
    centred->addLayout(page);
    centred->addStretch();
    setLayout(centred);
    orderFocus();
    return true;
}

void VexaFeatureTree::orderFocus()
{
    // View and description were made first: all others go before them. Nothing can stand behind a widget that takes
    // no focus.
    QList<QWidget *> order{this, m_pReturnButton, m_pUserLevelCombo, m_pSearchEdit};
    for (QPushButton *button : m_pToolBar->findChildren<QPushButton *>()) {
        order += button; // made in the order in which they stand
    }
    setFocusPolicy(Qt::TabFocus);
    for (int place = 1; place < order.size(); ++place) {
        setTabOrder(order.at(place - 1), order.at(place));
    }
    setFocusPolicy(Qt::NoFocus);
}

bool VexaFeatureTree::InitSignals()
{
    using Worker = QGetFeaturesThread;
    using Tree = VexaFeatureTree;
    const QMetaObject::Connection connections[] = {
        connect(m_pInvalidateUpdateThread, &Worker::SigUpdateRoundStart, this,
                &Tree::OnUpdateRoundStart),
        connect(m_pLockAndRelativeThread, &Worker::SigUpdateRoundStart, this,
                &Tree::OnUpdateRoundStart),
        connect(m_pTimerAndAllThread, &Worker::sigThreadStart, this, &Tree::OnGetThreadStart),
        connect(m_pPollingThread, &Worker::sigThreadStart, this, &Tree::OnGetThreadStart),
        connect(m_pInvalidateUpdateThread, &Worker::SigUpdateRoundEnd, this,
                &Tree::OnUpdateRoundEnd),
        connect(m_pLockAndRelativeThread, &Worker::SigUpdateRoundEnd, this,
                &Tree::OnUpdateRoundEnd),
        connect(m_pTimerAndAllThread, &Worker::sigThreadEnd, this, &Tree::OnGetThreadEnd),
        connect(m_pPollingThread, &Worker::sigThreadEnd, this, &Tree::OnGetThreadEnd),
        connect(m_pUserLevelCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &Tree::OnUserLevelChanged),
        connect(m_pTreeView, &QTreeView::pressed, this, &Tree::OnChangeItem),
        connect(m_pTreeView, &QWidget::customContextMenuRequested, this,
                &Tree::OnTreeFeaturesCustomContextMenuRequested),
        connect(m_pSearchEdit, &QLineEdit::textChanged, this, &Tree::OnFeaturesSearch),
        connect(m_pSearchEdit, &CustomLineEdit::cSigSearchClicked, this, &Tree::OnBtnSearch),
        connect(m_pInvalidateTimer, &QTimer::timeout, this, &Tree::OnTimeInvalidaterFeaturesUpdate),
        connect(m_pRefreshTimer, &QTimer::timeout, this, &Tree::OnTimerRefreshFinished),
        connect(m_pAutoTriggerTimer, &QTimer::timeout, this, &Tree::OnTimerAutoTrigger),
        connect(m_pImExThread, &VexaFeatureImExThread::SigEndFeatureImExThread, this,
                &Tree::OnEndFeatureImExThread),
        connect(m_pToolBar, &VexaFeatureToolBar::SigToolBarBtnClicked, this,
                &Tree::SigToolBarBtnClicked),
        connect(this, &Tree::SigSetFeatureValueByThread, this, &Tree::SetFeatureValueByThread),
        connect(m_pPollingTimer, &QTimer::timeout, this, &Tree::OnTimerFeaturePolling),
        connect(m_pLockAndRelativeThread, &Worker::SigThreadSmarTuneData, this,
                &Tree::GetFeatureValueByThread),
        connect(m_pTimerAndAllThread, &Worker::SigThreadSmarTuneData, this,
                &Tree::GetFeatureValueByThread),
        connect(m_pPollingThread, &Worker::SigThreadSmarTuneData, this,
                &Tree::GetFeatureValueByThread),
        connect(m_pReturnButton, &QPushButton::clicked, this, &Tree::OnReturnClicked),
        connect(this, &Tree::SigRefreshFeatures, this, &Tree::RefreshFeatures),
        connect(m_pTreeView, &VexaFeatureTreeView::sigFeatureActivated, this, &Tree::OnChangeItem),
    };
    for (const QMetaObject::Connection &connection : connections) {
        if (!connection) {
            return false;
        }
    }
    return true;
}

void VexaFeatureTree::fillUserLevelCombo()
{
    for (int level = 0; level < USER_LEVELS; ++level) {
        m_pUserLevelCombo->addItem(translated(USER_LEVEL_KEYS[level]), level);
    }
    OnOptionsChanged();
}

void VexaFeatureTree::OnOptionsChanged()
{
    if (!m_pUserLevelCombo) {
        return;
    }
    m_pUserLevelCombo->SetCurrentSel(QLocalCfg::Instance()->GetUserLevel());
}

void VexaFeatureTree::RefreshWidgetInfo()
{
    if (!m_pPageTitle || !m_pContextMenu) {
        return;
    }
    m_pUserLevelTitle->setText(translated("lang_qfeaturetree_userlevel"));
    for (int level = 0; level < USER_LEVELS; ++level) {
        m_pUserLevelCombo->setItemText(level, translated(USER_LEVEL_KEYS[level]));
    }
    m_pSearchEdit->setPlaceholderText(translated("lang_qfeaturetree_search"));
    m_pDescriptionTitle->setText(translated("lang_qfeaturetree_featuredesc"));
    m_pUserLevelCombo->setAccessibleName(m_pUserLevelTitle->text());
    m_pSearchEdit->setAccessibleName(m_pSearchEdit->placeholderText());
    m_pDescriptionEdit->setAccessibleName(m_pDescriptionTitle->text());
    m_pTreeView->setAccessibleName(translated("lang_qfeaturetree_allfeature"));
    m_pReturnButton->setText(translated("lang_qfeaturetree_return"));
    m_pPageTitle->setText(translated("lang_qfeaturetree_allfeature"));
    m_pActionFavoriteAdd->setText(translated("lang_qfeaturetree_favoriteadd"));
    m_pActionFavoriteRemove->setText(translated("lang_qfeaturetree_favoriteremove"));
    m_pActionFavoriteRemoveAll->setText(translated("lang_qfeaturetree_favoriteremoveall"));
}

void VexaFeatureTree::releaseWidgets()
{
    const auto release = [](auto *&widget) {
        delete widget;
        widget = nullptr;
    };
    release(m_pContextMenu);
    m_pActionFavoriteAdd = nullptr;
    m_pActionFavoriteRemove = nullptr;
    m_pActionFavoriteRemoveAll = nullptr;
    release(m_pTreeView);
    release(m_pToolBar);
    release(m_pSearchEdit);
    release(m_pDescriptionTitle);
    release(m_pDescriptionEdit);
    release(m_pUserLevelTitle);
    release(m_pUserLevelCombo);
    release(m_pReturnButton);
    release(m_pPageTitle);
}
