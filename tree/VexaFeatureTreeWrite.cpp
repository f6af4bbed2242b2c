// The dispatcher of writes: what comes before and after a typed write, and who may call it.

#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/ItemLocks.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/CommandRules.h"
#include "tree/FeatureReader.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"
#include "tree/WriteFollowUps.h"
#include "tree/WriteMessages.h"
#include "tree/WriteNodeRules.h"

#include <QDebug>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <memory>

namespace {

constexpr int RUNNING_MODE_KEEPS_PROTOCOL = 2;

using Tree = VexaFeatureTree;

struct TypedWrite
{
    const char *type;
    /// Whether the value can stand for this type at all: what is no number must not become a 0.
    bool (*fits)(const QVariant &value);
    bool (*write)(Tree &tree, const QString &name, const QVariant &value);
};

bool fitsInteger(const QVariant &value)
{
    bool fits = false;
    value.toLongLong(&fits);
    return fits;
}

bool fitsFloat(const QVariant &value)
{
    bool fits = false;
    value.toDouble(&fits);
    return fits;
}

bool fitsAlways(const QVariant &)
{
    return true;
}

const TypedWrite TYPED_WRITES[] = {
    {"Boolean", fitsInteger,
     [](Tree &tree, const QString &name, const QVariant &value) {
         return tree.OnBooleanNodeValueChanged(name, value.toInt());
     }},
    {"Command", fitsAlways,
     [](Tree &tree, const QString &name, const QVariant &) {
         return tree.OnCommandNodeBtnClicked(name);
     }},
    {"Integer", fitsInteger,
     [](Tree &tree, const QString &name, const QVariant &value) {
         return tree.OnIntegerNodeValueChanged(name, value.toLongLong());
     }},
    {"Enumeration", fitsInteger,
     [](Tree &tree, const QString &name, const QVariant &value) {
         return tree.OnEnumerationNodeValueChanged(name, value.toInt());
     }},
    {"Float", fitsFloat,
     [](Tree &tree, const QString &name, const QVariant &value) {
         return tree.OnFloatNodeValueChanged(name, static_cast<float>(value.toDouble()));
     }},
    {"StringReg", fitsAlways,
     [](Tree &tree, const QString &name, const QVariant &value) {
         return tree.OnStringRegNodeValueChanged(name, value.toString());
     }},
};

/// Null for a type without a typed write.
const TypedWrite *typedWriteOf(const QString &type)
{
    for (const TypedWrite &row : TYPED_WRITES) {
        if (type == QLatin1String(row.type)) {
            return &row;
        }
    }
    return nullptr;
}

/// Under the item's lock: only what a value that was read tells, names and representation stay.
void takeOver(CTreeItemValue &value, CTreeItemValue &read)
{
    if (auto *enumeration = dynamic_cast<CTreeEnumationItemValue *>(&value)) {
        enumeration->setDeviceValue(
            static_cast<quint32>(static_cast<CTreeEnumationItemValue &>(read).m_nValue));
    } else if (auto *text = dynamic_cast<CTreeStringItemValue *>(&value)) {
        text->m_strValue = static_cast<CTreeStringItemValue &>(read).m_strValue;
    } else {
        if (auto *integer = dynamic_cast<CTreeIntergerItemValue *>(&value)) {
            static_cast<CTreeIntergerItemValue &>(read).m_strRepresentation =
                integer->m_strRepresentation;
        }
        value.copy(&read, false);
    }
}

} // namespace

bool VexaFeatureTree::setFeatureValue(VexaPropertyTreeItem *item, const QVariant &value,
                                      bool updateItem, bool fromUiJson)
{
    if (!item || !item->value() || item->tagName().isEmpty()) {
        return false;
    }
    const TreeCallScope scope(this);
    const QString name = item->value()->m_strNodeName;
    const int timesCleared = m_nTimesCleared;
    const bool written = setFeatureValue(item->tagName(), name, value);
    if (!written || !updateItem || scope.treeIsGoing() || timesCleared != m_nTimesCleared
        || (commandRuleOf(name).traits & CommandTrait::TakesDeviceAway)) {
        return written;
    }
    const quint64 reading = item->beginReading();
    {
        const ItemLock lock(item);
        item->publishReading(reading, VexaPropertyTreeItem::READING_VALUE);
        item->value()->setValue(value);
    }
    item->notifyViewUpdate(m_lCameraID, -1, false, fromUiJson);
    return written;
}

bool VexaFeatureTree::setFeatureValue(const QString &strNodeType, const QString &strNodeName,
                                      const QVariant &oNodeValue)
{
    Q_ASSERT(thread() == QThread::currentThread());
    if (m_bReadyForDelete) {
        return false;
    }
    if (m_writesUnderWay.contains(strNodeName)) {
        qInfo().noquote() << QStringLiteral("%1 is being written already").arg(strNodeName);
        return false;
    }
    const TreeCallScope scope(this);
    m_writesUnderWay.insert(strNodeName);
    const bool written = writeFeature(strNodeType, strNodeName, oNodeValue);
    m_writesUnderWay.remove(strNodeName);
    if (scope.treeIsGoing()) {
        return false;
    }
    // Without a refresh on its way no end of a round would hide the dialog.
    if (!written || !m_pInvalidateTimer || !m_pInvalidateTimer->isActive()) {
        hideLoading();
    }
    return written;
}

bool VexaFeatureTree::writeFeature(const QString &type, const QString &name, const QVariant &value)
{
    const TreeCallScope scope(this);
    ShowLoadingFeatures(true, true);
    if (scope.treeIsGoing()) {
        return false;
    }
    const TypedWrite *typed = typedWriteOf(type);
    if (!typed) {
        qInfo().noquote()
            << QStringLiteral("%1 is of type %2, which cannot be written").arg(name, type);
        return false;
    }
    if (!typed->fits(value)) {
        ShowMessage(this, WriteMessages::translated("lang_qfeaturetree_failedsetval"),
                    WriteMessages::failed(name, value.toString().toHtmlEscaped(),
                                          WriteMessages::translated("lang_qfeaturetree_nonumber")),
                    QString(), HINT_FAILURE, true);
        return false;
    }
    if (type == QLatin1String("Command") && (writeRulesOf(name) & WriteRule::AsksWithWarning)) {
        if (!confirmed(BOX_CAUTION,
                       WriteMessages::translated("lang_qfeaturetree_pleaseusecaution"))) {
            return false;
        }
    }
    if (type == QLatin1String("Enumeration") && name == QLatin1String("RunningMode")
        && value.toInt() == RUNNING_MODE_KEEPS_PROTOCOL) {
        enumerationValue(QStringLiteral("CommunicationProtocols"), m_nSavedProtocol);
    }
    const bool written = typed->write(*this, name, value);
    if (scope.treeIsGoing()) {
        return false;
    }
    if (written) {
        // Taken back by the event loop, for a caller that does not take the value over.
        m_strJustWritten = name;
        QMetaObject::invokeMethod(
            this, [this] { m_strJustWritten.clear(); }, Qt::QueuedConnection);
    }
    WriteFollowUps::run(*this, type, name, value, written);
    return written && !scope.treeIsGoing();
}

bool VexaFeatureTree::rereadFeatureValue(VexaPropertyTreeItem *item, bool notifyView)
{
    if (!item || !item->value() || item->value()->m_strNodeName.isEmpty() || !cameraTask()) {
        return false;
    }
    const std::atomic<long int> cameraId{m_lCameraID};
    const quint64 reading = item->beginReading();
    const std::unique_ptr<CTreeItemValue> read =
        FeatureReader(cameraId).readValue(item->tagName(), item->value()->m_strNodeName);
    if (read) {
        const ItemLock lock(item);
        if (item->publishReading(reading, VexaPropertyTreeItem::READING_VALUE)) {
            takeOver(*item->value(), *read);
            item->setValueCached(true);
        }
    }
    if (notifyView) {
        item->notifyViewUpdate(m_lCameraID, -1, false, false);
    }
    return read != nullptr;
}

void VexaFeatureTree::SendSetFeatureValueSignal(const QString &strNodeType,
                                                const QString &strNodeName,
                                                const QVariant &oNodeValue)
{
    emit SigSetFeatureValueByThread(strNodeType, strNodeName, oNodeValue);
}

void VexaFeatureTree::SetFeatureValueByThread(QString strNodeType, QString strNodeName,
                                              QVariant oNodeValue)
{
    setFeatureValue(strNodeType, strNodeName, oNodeValue);
}
