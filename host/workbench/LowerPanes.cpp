#include "host/workbench/LowerPanes.h"

#include "host/workbench/MessageLogPanel.h"
#include "host/workbench/ReaderTables.h"
#include "host/workbench/ReaderTablesPanel.h"
#include "host/workbench/WorkbenchTexts.h"

#include <QEvent>
#include <QTabBar>

namespace {

constexpr int MESSAGES_HEIGHT = 130;
constexpr int TABLES_HEIGHT = 260;

} // namespace

LowerPanes::LowerPanes(QWidget *parent)
    : QTabWidget(parent)
    , m_pMessages(new MessageLogPanel)
    , m_pTables(new ReaderTablesPanel(this))
    , m_heights{{m_pMessages, MESSAGES_HEIGHT}, {m_pTables, TABLES_HEIGHT}}
{
    setObjectName(QStringLiteral("LowerPanes"));
    setDocumentMode(true);
    setTabBarAutoHide(true);
    // The bar takes the focus by itself; a hidden one that stands for the panes would hold it for ever.
    setFocusProxy(nullptr);
    setFocusPolicy(Qt::NoFocus);
    m_pTables->hide();
    addTab(m_pMessages, QString());
    retranslate();
    connect(this, &QTabWidget::currentChanged, this, &LowerPanes::onCurrentChanged);
}

LowerPanes::~LowerPanes() = default;

void LowerPanes::setTables(ReaderTables *tables)
{
    const bool has = tables && !tables->isEmpty();
    m_pTables->setTables(has ? tables : nullptr);
    if (has == (indexOf(m_pTables) >= 0)) {
        return;
    }
    if (has) {
        addTab(m_pTables, workbenchText("lang_workbench_pollingtable"));
    } else {
        removeTab(indexOf(m_pTables));
        m_pTables->setParent(this);
        m_pTables->hide();
    }
    m_pMessages->setTitleVisible(!has);
}

void LowerPanes::onCurrentChanged()
{
    if (currentWidget()) {
        emit heightWanted(m_heights.value(currentWidget()));
    }
}

void LowerPanes::resizeEvent(QResizeEvent *event)
{
    QTabWidget::resizeEvent(event);
    if (currentWidget() && isVisible()) {
        m_heights[currentWidget()] = height();
    }
}

void LowerPanes::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    QTabWidget::changeEvent(event);
}

void LowerPanes::retranslate()
{
    setTabText(indexOf(m_pMessages), workbenchText("lang_workbench_messages"));
    if (indexOf(m_pTables) >= 0) {
        setTabText(indexOf(m_pTables), workbenchText("lang_workbench_pollingtable"));
    }
}
