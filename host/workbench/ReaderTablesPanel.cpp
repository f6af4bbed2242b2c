#include "host/workbench/ReaderTablesPanel.h"

#include "ControlKit/CustomSortHeaderView.h"
#include "host/workbench/ReaderTables.h"
#include "host/workbench/WorkbenchTexts.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QTableView>

namespace {

constexpr int ROW_HEIGHT = 28;
constexpr int SET_WIDTH = 112;
constexpr int CODE_TYPES_WIDTH = 300;
constexpr int LIMIT_WIDTH = 110;

QTableView *makeTable(const char *objectName, QWidget *parent)
{
    auto *table = new QTableView(parent);
    table->setObjectName(QLatin1String(objectName));
    table->setHorizontalHeader(new CustomSortHeaderView(Qt::Horizontal, table));
    table->setVerticalHeader(new CustomSortHeaderView(Qt::Vertical, table));
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    table->setCornerButtonEnabled(false);
    table->setShowGrid(false);
    table->setAlternatingRowColors(true);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setMinimumSectionSize(ROW_HEIGHT);
    table->verticalHeader()->setDefaultSectionSize(ROW_HEIGHT);
    table->horizontalHeader()->setHighlightSections(false);
    table->verticalHeader()->setHighlightSections(false);
    return table;
}

} // namespace

ReaderTablesPanel::ReaderTablesPanel(QWidget *parent)
    : CustomWidget(parent)
    , m_pPolling(makeTable("PollingTable", this))
    , m_pCodeTypes(makeTable("CodeTypeTable", this))
{
    m_pPolling->horizontalHeader()->setDefaultSectionSize(SET_WIDTH);
    m_pCodeTypes->setFixedWidth(CODE_TYPES_WIDTH);
    m_pCodeTypes->verticalHeader()->hide();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(12, 8, 12, 10);
    row->setSpacing(12);
    row->addWidget(m_pPolling, 1);
    row->addWidget(m_pCodeTypes);
    retranslate();
}

ReaderTablesPanel::~ReaderTablesPanel() = default;

void ReaderTablesPanel::show(QTableView &view, QAbstractItemModel *model)
{
    if (view.model() != model) {
        // The view owns the selections that it makes, and leaves the old one behind.
        const QItemSelectionModel *former = view.selectionModel();
        view.setModel(model);
        delete former;
    }
    view.setVisible(model);
}

void ReaderTablesPanel::setTables(ReaderTables *tables)
{
    show(*m_pPolling, tables && !tables->polling().isEmpty() ? &tables->polling() : nullptr);
    show(*m_pCodeTypes,
         tables && tables->codeTypes().rowCount() > 0 ? &tables->codeTypes() : nullptr);
    fitColumns();
}

void ReaderTablesPanel::fitColumns()
{
    if (QHeaderView *header = m_pCodeTypes->horizontalHeader(); header->count() > 1) {
        header->setSectionResizeMode(0, QHeaderView::Stretch);
        header->resizeSection(1, LIMIT_WIDTH);
    }
    // The date of the last write stands before the sets, however many there are.
    if (QHeaderView *sets = m_pPolling->horizontalHeader(); sets->count() > 1) {
        sets->moveSection(sets->visualIndex(sets->count() - 1), 0);
    }
    QHeaderView *names = m_pPolling->verticalHeader();
    names->setFixedWidth(names->sizeHint().width());
}

void ReaderTablesPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    CustomWidget::changeEvent(event);
}

void ReaderTablesPanel::retranslate()
{
    m_pPolling->setAccessibleName(workbenchText("lang_workbench_pollingtable"));
    m_pCodeTypes->setAccessibleName(workbenchText("lang_workbench_codetypes"));
    fitColumns();
}
