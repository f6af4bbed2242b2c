#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/stress/FreshRead.h"
#include "tests/view/EditFixture.h"
#include "view/VexaPropertyTreeModel.h"

#include <QRandomGenerator>
#include <QtTest>

/// Many writes of any features, through the gate that all edits pass: afterwards the tree shows what the device holds.
/// VEXA_EDIT_WRITES sets their number, VEXA_EDIT_SEED their order.
class tst_EditRandom : public QObject
{
    Q_OBJECT
private slots:
    void treeFollowsRandomWrites();
};

static int number(const char *pVariable, int nDefault)
{
    bool bOk = false;
    const int nValue = qEnvironmentVariableIntValue(pVariable, &bOk);
    return bOk ? nValue : nDefault;
}

/// A value that the feature may take now; invalid for a row that is no value.
static QVariant anyValue(const VexaPropertyTreeItem &item, QRandomGenerator &random)
{
    const std::unique_ptr<CTreeItemValue> value = item.valueSnapshot();
    if (const auto *const pInteger = dynamic_cast<CTreeIntergerItemValue *>(value.get())) {
        const qint64 nSteps = (pInteger->m_nMaxValue - pInteger->m_nMinValue)
            / qMax<qint64>(1, pInteger->m_nIncValue);
        return pInteger->m_nMinValue
            + qMax<qint64>(1, pInteger->m_nIncValue) * qint64(random.generateDouble() * nSteps);
    }
    if (const auto *const pFloat = dynamic_cast<CTreeFloatItemValue *>(value.get())) {
        return pFloat->m_fMinValue
            + random.generateDouble() * double(pFloat->m_fMaxValue - pFloat->m_fMinValue);
    }
    if (const auto *const pEntries = dynamic_cast<CTreeEnumationItemValue *>(value.get())) {
        const QList<qint64> numbers = pEntries->getAllEnumationMap().keys();
        return numbers.isEmpty() ? QVariant() : numbers.at(random.bounded(numbers.size()));
    }
    if (const auto *const pText = dynamic_cast<CTreeStringItemValue *>(value.get())) {
        return QString(random.bounded(qBound(1, pText->m_nMaxLength, 32)),
                       QChar('a' + random.bounded(26)));
    }
    return item.tagName() == "Boolean" ? QVariant(random.bounded(2) == 1) : QVariant();
}

void tst_EditRandom::treeFollowsRandomWrites()
{
    EditFixture fixture(SimulatedDevices::builtIn("code-reader"));
    const int nWrites = number("VEXA_EDIT_WRITES", 700);
    const int nSeed = number("VEXA_EDIT_SEED", 1);
    QRandomGenerator random{quint32(nSeed)};
    BoxAnswers boxes(Qt::Key_Return);
    const QList<VexaPropertyTreeItem *> items = fixture.tree().AllTreeItemsMap().values();
    QSet<QString> written;
    for (int i = 0; i < nWrites;) {
        VexaPropertyTreeItem *const pItem = items.at(random.bounded(items.size()));
        const QVariant value =
            pItem->readOnly() || !pItem->isValueCached() ? QVariant() : anyValue(*pItem, random);
        if (!value.isValid()) {
            continue;
        }
        fixture.view().propertyModel()->setData(fixture.view().indexOfItem(pItem, 1), value);
        written.insert(pItem->value()->m_strNodeName);
        if (++i % 25 == 0) {
            QCoreApplication::processEvents();
        }
    }
    QVERIFY2(written.size() > 120, qPrintable(QString::number(written.size())));
    QVERIFY(fixture.settle());
    FreshRead read;
    const auto isSame = [&] {
        read = FreshRead::compare(fixture.camera());
        return read.differences.isEmpty();
    };
    QVERIFY2(QTest::qWaitFor(isSame, 10000),
             qPrintable(QString("seed %1: ").arg(nSeed) + read.differences.join('\n')));
    QVERIFY2(read.values > 200, qPrintable(QString::number(read.values)));
    QVERIFY(fixture.writes() > nWrites / 2);
}

QTEST_MAIN(tst_EditRandom)
#include "tst_editrandom.moc"
