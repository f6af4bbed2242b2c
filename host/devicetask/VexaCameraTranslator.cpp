#include "DeviceTaskModule/VexaCameraTranslator.h"

#include "host/devicetask/CameraTaskFactory.h"
#include "host/devicetask/TaskRecord.h"
#include "host/devicetask/TaskRing.h"
#include "host/devicetask/VexaCameraTranslatorPrivate.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcTranslator, "vexa.devicetask.translator")

std::unique_ptr<VexaCameraTranslator::Private> VexaCameraTranslator::Private::fromJson(
    const QByteArray &json, const QString &deviceName)
{
    if (json.isEmpty()) {
        return nullptr;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (!document.isObject()) {
        qCWarning(lcTranslator, "The node texts of %s are not used: %s at byte %d.",
                  qUtf8Printable(deviceName),
                  document.isNull() ? qUtf8Printable(error.errorString()) : "no object",
                  error.offset);
        return nullptr;
    }
    auto texts = std::make_unique<Private>();
    const QJsonObject nodes = document.object();
    for (auto it = nodes.constBegin(); it != nodes.constEnd(); ++it) {
        const QJsonObject node = it.value().toObject();
        NodeTexts &target = texts->m_nodes[it.key()];
        target.displayName = node.value(QLatin1String("displayName")).toString();
        target.description = node.value(QLatin1String("description")).toString();
        const QJsonObject entries = node.value(QLatin1String("entries")).toObject();
        for (auto entry = entries.constBegin(); entry != entries.constEnd(); ++entry) {
            target.entries.insert(entry.key(), entry.value().toString());
        }
    }
    return texts;
}

VexaCameraTranslator::VexaCameraTranslator(std::unique_ptr<Private> data)
    : d(std::move(data))
{
}

VexaCameraTranslator::~VexaCameraTranslator() = default;

QString VexaCameraTranslator::getPropDisplayNameTrans(const QString &nodeName)
{
    return qAsConst(d->m_nodes).value(nodeName).displayName;
}

QString VexaCameraTranslator::getPropDescriptionTrans(const QString &nodeName)
{
    return qAsConst(d->m_nodes).value(nodeName).description;
}

QString VexaCameraTranslator::getPropEnumerationTrans(const QString &nodeName,
                                                      const QString &entryName)
{
    return qAsConst(d->m_nodes).value(nodeName).entries.value(entryName);
}

VexaCameraTranslatorManager::VexaCameraTranslatorManager() = default;
VexaCameraTranslatorManager::~VexaCameraTranslatorManager() = default;

VexaCameraTranslatorManager *VexaCameraTranslatorManager::getInstance()
{
    static auto *const s_pManager = new VexaCameraTranslatorManager;
    return s_pManager;
}

VexaCameraTranslator *VexaCameraTranslatorManager::getCameraTranslator(int cameraId)
{
    const std::shared_ptr<TaskRecord> record = CameraTaskFactory::registry().find(cameraId);
    if (!record) {
        return nullptr;
    }
    TaskRing::ofThread().touch(record);
    return record->m_pTranslator.get();
}
