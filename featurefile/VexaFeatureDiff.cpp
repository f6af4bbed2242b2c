#include "featurefile/VexaFeatureDiff.h"

#include "ControlKit/Custom.h"
#include "ControlKit/CustomPushButton.h"
#include "ControlKit/CustomSortHeaderView.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QEvent>
#include <QHeaderView>
#include <QMutexLocker>
#include <QStandardItemModel>
#include <QTableView>
#include <QTextDocument>

namespace {

constexpr int STRETCH_EDGES = 203;
constexpr int ABOVE_PARENT = 1;
constexpr int SMALLEST_COLUMN = 40;
constexpr int HEADER_HEIGHT = 38;
constexpr int ROW_HEIGHT = 38;
constexpr int BAR_HEIGHT = 32;
constexpr int BUTTON_SPACING = 14;
constexpr int EDGE = 18;
constexpr int STYLE_ACCENT = 1;
constexpr int STYLE_PLAIN = 2;
const QSize DIALOG_SIZE(854, 560);
const QSize SMALLEST_BUTTON(74, 24);

struct Column
{
    const char *key;
    int width;
};

const Column COLUMNS[] = {{"lang_qfeaturediff_category", 240},
                          {"lang_qfeaturediff_featurename", 290},
                          {"lang_qfeaturediff_importfeature", 140},
                          {"lang_qfeaturediff_currentvalue", 140}};
constexpr int COLUMN_COUNT = sizeof(COLUMNS) / sizeof(COLUMNS[0]);

QString answerOk()
{
    return QStringLiteral("OK");
}

QString translated(const char *key)
{
    return QCoreApplication::translate("QFeatureDiff", key);
}

void fit(CustomPushButton *button, const QString &text)
{
    button->setText(text);
    button->setFixedSize(1, 1);
    button->setFixedSize(button->sizeHint().expandedTo(SMALLEST_BUTTON));
}

/// A column may be too narrow for the whole text.
QStandardItem *cell(const QString &text)
{
    auto *const item = new QStandardItem(text);
    item->setToolTip(text.isEmpty() ? text : Qt::convertFromPlainText(text));
    return item;
}

} // namespace

VexaFeatureDiff::VexaFeatureDiff(QWidget *parent)
    : CustomMainWindow(parent)
    , m_pTable(new QTableView)
    , m_pModel(new QStandardItemModel(0, COLUMN_COUNT, this))
{
    cEnableDefualtShadow();
    cSetBackgroundColor(QColor(QStringLiteral("#F2F3F5")));
    cSetStrechEdges(STRETCH_EDGES);
    cSetWindowLever(ABOVE_PARENT);
    resize(DIALOG_SIZE);
    cTitleBar()->setFixedHeight(CustomTitleBar::HEIGHT);
    cTitleBar()->cSetTitleControls(CustomTitleBar::CLOSE);
    cSetEnableButtonBar(false);
    makeTable();

    auto *content = new QWidget;
    QBoxLayout *tableBox = Custom::createLayout(Qt::Vertical);
    tableBox->setContentsMargins(EDGE, EDGE, EDGE, 50);
    tableBox->addWidget(m_pTable);
    QBoxLayout *box = Custom::createLayout(Qt::Vertical);
    content->setLayout(box);
    box->addLayout(tableBox);
    box->addWidget(makeButtonBar());
    cSetCentralWidget(content);
    setTexts();
    m_pOkButton->setDefault(true);
}

void VexaFeatureDiff::makeTable()
{
    auto *header = new CustomSortHeaderView(Qt::Horizontal, m_pTable);
    m_pTable->setModel(m_pModel);
    m_pTable->setHorizontalHeader(header);
    header->setFixedHeight(HEADER_HEIGHT);
    header->setHighlightSections(false);
    header->setMinimumSectionSize(SMALLEST_COLUMN);
    header->setStretchLastSection(true);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_pTable->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_pTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pTable->setSelectionMode(QAbstractItemView::SingleSelection);
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pTable->setTabKeyNavigation(false);
    m_pTable->setWordWrap(false);
    m_pTable->setStyleSheet(Custom::styleSheet(Custom::STYLE_TABLE));
    m_pTable->setAlternatingRowColors(true);
    m_pTable->setFrameShape(QFrame::NoFrame);
    m_pTable->setShowGrid(true);
    m_pTable->verticalHeader()->hide();
    m_pTable->verticalHeader()->setDefaultSectionSize(ROW_HEIGHT);
    for (int column = 0; column < COLUMN_COUNT; ++column) {
        m_pTable->setColumnWidth(column, COLUMNS[column].width);
    }
    // It stretches to what the others leave, and its own width would be the least: where frame and scroll bar take their
    // part of the dialog the list would have to be moved sideways.
    m_pTable->setColumnWidth(COLUMN_COUNT - 1, SMALLEST_COLUMN);
}

CustomPushButton *VexaFeatureDiff::makeButton(int style, const QString &answer)
{
    auto *button = new CustomPushButton(style, this);
    button->cSetUserData(answer);
    connect(button, &CustomPushButton::clicked, this, &VexaFeatureDiff::onButtonClicked);
    return button;
}

QWidget *VexaFeatureDiff::makeButtonBar()
{
    m_pOkButton = makeButton(STYLE_ACCENT, answerOk());
    m_pCancelButton = makeButton(STYLE_PLAIN, QStringLiteral("Cancel"));
    m_pCancelButton->cSetBackgroundColor(QColor(QStringLiteral("#F2F3F5")), Custom::STATUS_NORMAL);
    m_pCancelButton->cSetBackgroundColor(QColor(QStringLiteral("#F76900")), Custom::STATUS_HOVER);
    m_pCancelButton->cSetBackgroundColor(QColor(QStringLiteral("#F76900")), Custom::STATUS_PRESSED);
    m_pCancelButton->cSetBackgroundColor(QColor(QStringLiteral("#66F3F3F3")),
                                         Custom::STATUS_DISABLED);
    auto *bar = new QWidget;
    bar->setFixedHeight(BAR_HEIGHT);
    // By name: without a selector the buttons on it would lose their own look.
    bar->setObjectName(QStringLiteral("FeatureDiffBar"));
    bar->setStyleSheet(
        QStringLiteral("#FeatureDiffBar{background-color:%1}").arg(QStringLiteral("#E4E5E7")));
    QBoxLayout *row = Custom::createLayout(Qt::Horizontal);
    bar->setLayout(row);
    row->addStretch();
    row->addWidget(m_pOkButton);
    row->addSpacing(BUTTON_SPACING);
    row->addWidget(m_pCancelButton);
    row->addSpacing(EDGE);
    return bar;
}

void VexaFeatureDiff::setTexts()
{
    const QString title = translated("lang_qfeaturediff_featurediff");
    setWindowTitle(title);
    cTitleBar()->cSetTitleText(title);
    QStringList headers;
    for (const Column &column : COLUMNS) {
        headers += translated(column.key);
    }
    m_pModel->setHorizontalHeaderLabels(headers);
    fit(m_pOkButton, translated("lang_qfeaturediff_importok"));
    fit(m_pCancelButton, translated("lang_qfeaturediff_importcancel"));
}

void VexaFeatureDiff::changeEvent(QEvent *event)
{
    CustomMainWindow::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        setTexts();
    }
}

void VexaFeatureDiff::setDiffs(const FeatureDifferences &diffs)
{
    const QMutexLocker locker(&m_diffMutex);
    m_diffs = diffs;
    // The dialog is used again: not where the last import left it.
    m_pOkButton->setFocus();
    m_pTable->clearSpans();
    m_pModel->setRowCount(0);
    for (auto it = m_diffs.cbegin(); it != m_diffs.cend(); ++it) {
        const int first = m_pModel->rowCount();
        for (const FeatureDifference &difference : it.value()) {
            const int row = m_pModel->rowCount();
            m_pModel->setItem(row, 1, cell(difference.name));
            m_pModel->setItem(row, 3, cell(difference.deviceValue));
            m_pModel->setItem(row, 2, cell(difference.fileValue));
            m_pTable->setRowHeight(row, ROW_HEIGHT);
        }
        const int rows = m_pModel->rowCount() - first;
        if (rows > 0) {
            m_pModel->setItem(first, 0, cell(it.key()));
        }
        if (rows > 1) {
            m_pTable->setSpan(first, 0, rows, 1);
        }
    }
}

void VexaFeatureDiff::onButtonClicked()
{
    const auto *button = qobject_cast<CustomPushButton *>(sender());
    if (button && button->cUserData().toString() == answerOk()) {
        accept();
    } else {
        reject();
    }
}
