#include "tests/view/ViewFixture.h"

#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "view/VexaPropertyTreeModel.h"

#include <QHBoxLayout>
#include <QRegExp>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTest>

RecordingFeatureWidget::RecordingFeatureWidget(int nPageIndex)
    : IVexaFeatureWidget(nPageIndex)
{
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pTreeView);
}

bool RecordingFeatureWidget::setFeatureValue(const QString &strNodeType, const QString &strNodeName,
                                             const QVariant &oNodeValue)
{
    m_writes.append(strNodeType + ' ' + strNodeName + ' ' + oNodeValue.toString());
    const bool bAnswer = m_bAnswer;
    if (const std::function<void()> act = m_inWrite) { // a copy: the widget may go in it
        act();
    }
    return bAnswer;
}

void RecordingFeatureWidget::hideBelow(VexaPropertyTreeItem *pItem)
{
    m_showBasicOnly[int(ViewFixture::CAMERA)] = true;
    m_showInAllItems[int(ViewFixture::CAMERA)] = {pItem};
}

ViewFixture::ViewFixture(const QString &strTree, int nPageIndex)
    : m_pOwner(std::make_unique<RecordingFeatureWidget>(nPageIndex))
    , m_pRoot(std::make_unique<VexaPropertyTreeItem>())
{
    QStandardPaths::setTestModeEnabled(true);
    QVector<VexaPropertyTreeItem *> path{m_pRoot.get()};
    for (const QString &strLine : strTree.split('\n', Qt::SkipEmptyParts)) {
        const int nDepth =
            int(strLine.size() - QString(strLine).replace(QRegExp("^ +"), QString()).size()) / 2;
        const QStringList words = strLine.split(' ', Qt::SkipEmptyParts);
        path.resize(nDepth + 1);
        auto *const pItem = new VexaPropertyTreeItem(path.last(), nPageIndex);
        pItem->value()->m_strNodeName = words.first();
        pItem->value()->m_strDisplayName = words.first();
        pItem->setItemType(words.size() > 1 ? ITEM_FEATURE : ITEM_CATEGORY);
        pItem->setTagName(words.value(1));
        pItem->registerView(&view());
        path.append(pItem);
    }
    view().setCameraAndRoot(CAMERA, m_pRoot.get());
}

ViewFixture::~ViewFixture()
{
    clear();
}

void ViewFixture::clear()
{
    if (m_pOwner) {
        view().ClearTreeViewInfo();
    }
}

VexaPropertyTreeItem *ViewFixture::item(const QString &strName) const
{
    QVector<VexaPropertyTreeItem *> waiting{m_pRoot.get()};
    while (!waiting.isEmpty()) {
        VexaPropertyTreeItem *const pItem = waiting.takeLast();
        if (nodeNameOf(pItem) == strName) {
            return pItem;
        }
        for (int i = pItem->childCount() - 1; i >= 0; --i) {
            waiting.append(pItem->child(i));
        }
    }
    return nullptr;
}

QWidget *ViewFixture::editor(const QString &strName, int nColumn)
{
    return view().indexWidget(view().indexOfItem(item(strName), nColumn));
}

void ViewFixture::show(const QSize &size)
{
    view().expandAll();
    view().openEditors(m_pRoot.get());
    m_pOwner->resize(size);
    m_pOwner->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pOwner.get()));
}

QString ViewFixture::shownRows()
{
    QStringList lines;
    view().doItemsLayout();
    for (QModelIndex index = view().indexAt(QPoint(0, -view().verticalScrollBar()->value()));
         index.isValid(); index = view().indexBelow(index)) {
        int nDepth = 0;
        for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) {
            ++nDepth;
        }
        lines.append(QString(2 * nDepth, ' ') + nodeNameOf(view().itemAt(index)));
    }
    return lines.join('\n');
}

void ViewFixture::finish(VexaPropertyTreeItem *pItem)
{
    pItem->setValueCached(true);
    pItem->endUpdateItem(CAMERA);
}

void ViewFixture::setInteger(const QString &strName, qint64 nValue, qint64 nMinimum,
                             qint64 nMaximum, qint64 nIncrement, const QString &strRepresentation)
{
    auto *const pValue = static_cast<CTreeIntergerItemValue *>(item(strName)->value());
    pValue->m_nValue = nValue;
    pValue->m_nMinValue = nMinimum;
    pValue->m_nMaxValue = nMaximum;
    pValue->m_nIncValue = nIncrement;
    pValue->m_strRepresentation = strRepresentation;
    finish(item(strName));
}

void ViewFixture::setFloat(const QString &strName, float fValue, float fMinimum, float fMaximum)
{
    auto *const pValue = static_cast<CTreeFloatItemValue *>(item(strName)->value());
    pValue->m_fValue = fValue;
    pValue->m_fMinValue = fMinimum;
    pValue->m_fMaxValue = fMaximum;
    finish(item(strName));
}

void ViewFixture::setBoolean(const QString &strName, bool bValue)
{
    item(strName)->value()->setValue(bValue);
    finish(item(strName));
}

void ViewFixture::setEnumeration(const QString &strName, const QStringList &entries, qint64 nValue)
{
    auto *const pValue = static_cast<CTreeEnumationItemValue *>(item(strName)->value());
    pValue->clearItems();
    for (int i = 0; i < entries.size(); ++i) {
        pValue->updateDisplayName(entries.at(i), entries.at(i), 10 * i, CAMERA);
    }
    pValue->m_nValue = nValue;
    finish(item(strName));
}

void ViewFixture::setReadOnly(const QString &strName, bool bReadOnly)
{
    item(strName)->setReadOnly(CAMERA, bReadOnly);
    item(strName)->endUpdateItem(CAMERA);
}

const char *const ViewFixture::ONE_OF_EACH = "All\n"
                                             "  Bool Boolean\n"
                                             "  Int Integer\n"
                                             "  Enum Enumeration\n"
                                             "  Float Float\n"
                                             "  Cmd Command\n";

void ViewFixture::fillOneOfEach()
{
    for (const char *name : {"Bool", "Int", "Enum", "Float", "Cmd"}) {
        setReadOnly(name, false);
    }
    setBoolean("Bool", true);
    setInteger("Int", 42, 0, 100);
    setEnumeration("Enum", {"Mono8", "Mono12", "RGB8"}, 10);
    setFloat("Float", 1.25F, 0, 10);
}
