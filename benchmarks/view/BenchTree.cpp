#include "benchmarks/view/BenchTree.h"

#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomPushButton.h"
#include "ShellServicesModule/QPropertyLineEdit.h"
#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "view/ItemNames.h"
#include "view/VexaPropertySpinBox.h"

#include <QCoreApplication>
#include <QHBoxLayout>

namespace {

constexpr int CATEGORY_SIZE = 50;

const char *tagOf(int nRow)
{
    static const char *const tags[] = {"Integer", "Enumeration", "Integer", "Float",   "Integer",
                                       "Boolean", "Enumeration", "Integer", "Command", "Float"};
    return tags[nRow % 10];
}

void changeValue(VexaPropertyTreeItem *pItem, int nNumber)
{
    const ItemLock lock(pItem);
    CTreeItemValue *const pValue = pItem->value();
    if (auto *const pInteger = dynamic_cast<CTreeIntergerItemValue *>(pValue)) {
        pInteger->m_nMinValue = 0;
        pInteger->m_nMaxValue = 1000000;
        pInteger->m_nIncValue = 1;
        pInteger->m_nValue = nNumber;
    } else if (auto *const pFloat = dynamic_cast<CTreeFloatItemValue *>(pValue)) {
        pFloat->m_fMinValue = 0;
        pFloat->m_fMaxValue = 1000000;
        pFloat->m_fValue = float(nNumber);
    } else if (auto *const pBoolean = dynamic_cast<CTreeBooleanItemValue *>(pValue)) {
        pBoolean->m_bValue = nNumber % 2;
    } else if (auto *const pEnumeration = dynamic_cast<CTreeEnumationItemValue *>(pValue)) {
        pEnumeration->clearItems();
        for (int i = 0; i < 4; ++i) {
            const QString strName = QStringLiteral("Entry%1").arg(i);
            pEnumeration->updateDisplayName(strName, strName, i, BenchTree::CAMERA);
        }
        pEnumeration->m_nValue = nNumber % 4;
    }
}

class BenchOwner : public IVexaFeatureWidget
{
public:
    BenchOwner()
        : IVexaFeatureWidget(0)
    {
        auto *const layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(m_pTreeView);
        resize(600, 900);
    }
    bool setFeatureValue(const QString &, const QString &, const QVariant &) override
    {
        return false;
    }
};

} // namespace

BenchTree::BenchTree(int nRows)
    : m_pOwner(std::make_unique<BenchOwner>())
    , m_pRoot(std::make_unique<VexaPropertyTreeItem>())
{
    VexaPropertyTreeItem *pCategory = nullptr;
    for (int i = 0; i < nRows; ++i) {
        const bool bCategory = i % CATEGORY_SIZE == 0;
        auto *const pItem = new VexaPropertyTreeItem(bCategory ? m_pRoot.get() : pCategory);
        pItem->value()->m_strNodeName = QStringLiteral("Feature%1").arg(i);
        pItem->value()->m_strDisplayName = QStringLiteral("Feature %1").arg(i);
        pItem->registerView(&view());
        if (bCategory) {
            pCategory = pItem;
        } else {
            pItem->setItemType(ITEM_FEATURE);
            pItem->setTagName(QString::fromLatin1(tagOf(i)));
            pItem->setReadOnly(CAMERA, false);
            m_features.append(pItem);
        }
    }
}

BenchTree::~BenchTree()
{
    view().ClearTreeViewInfo();
}

void BenchTree::open(bool bEditors)
{
    view().setCameraAndRoot(CAMERA, m_pRoot.get());
    view().expandAll();
    if (bEditors) {
        view().openEditors(m_pRoot.get());
    }
}

void BenchTree::show()
{
    m_pOwner->show();
    QCoreApplication::processEvents();
}

void BenchTree::settle()
{
    while (view().hasWaitingRows()) {
        QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
}

void BenchTree::changeAllValues(int nRound)
{
    for (int i = 0; i < m_features.size(); ++i) {
        changeValue(m_features.at(i), nRound * 7 + i);
        m_features.at(i)->setValueCached(true);
        m_features.at(i)->endUpdateItem(CAMERA);
    }
}

QWidget *BenchTree::makeBareEditor(int nRow, QWidget *pParent)
{
    const QByteArray tag = tagOf(nRow);
    if (nRow % CATEGORY_SIZE == 0) {
        return nullptr;
    }
    if (tag == "Integer") {
        return new VexaPropertySpinBox(pParent);
    }
    if (tag == "Enumeration") {
        return new CustomComboBox(1, 0, pParent);
    }
    if (tag == "Float") {
        return new QPropertyLineEdit(1, pParent);
    }
    if (tag == "Boolean") {
        return new CustomCheckBox(4, pParent);
    }
    return new CustomPushButton(2, QStringLiteral("Execute"), pParent);
}
