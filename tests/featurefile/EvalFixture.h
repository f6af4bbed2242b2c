#pragma once

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "featurefile/EvalContext.h"
#include "model/FeatureTreeBuilder.h"
#include "model/NodeDependencyMaps.h"
#include "tests/support/ModuleFixture.h"

#include <QDomDocument>
#include <QRegularExpression>

/// A simulated device over a description, and an interpreter of the same description beside it.
struct EvalFixture
{
    /// The features are what the elements select, and the names in `features`.
    explicit EvalFixture(const QByteArray &elements, const QStringList &features = {"X"})
    {
        const QByteArray xml = descriptionOf(features, elements);
        document.setContent(xml);
        builder.GenerateDomElementMap(document.documentElement());
        maps.generate(document.documentElement(), builder.elementMap(),
                      builder.elementMap().keys());
        for (const auto &record : maps.pSelectedRecords()) {
            links.append({record.first, record.second});
        }
        device =
            SimulatedDevices::fromDescription(xml, "eval", SimulatorControl::MemoryPattern::Zero);
        const CameraHost::OpenResult opened = host.openCamera(*device.source);
        cameraId = opened.cameraId;
        QCameraBasicTask *basic = QTaskManager::Instance()->GetTaskByID(cameraId);
        task = basic ? basic->_CameraTak() : nullptr;
    }

    EvalContext context(bool isGigE = true, const std::atomic<bool> *stop = nullptr) const
    {
        return EvalContext(builder.elementMap(), links, task, isGigE, stop);
    }
    void poke(quint64 address, const char *hex)
    {
        device.control->poke(address, QByteArray::fromHex(hex));
    }

    CameraHost host;
    QDomDocument document;
    FeatureTreeBuilder builder;
    NodeDependencyMaps maps;
    QVector<SelectedLink> links;
    SimulatedDevices::Simulated device;
    long int cameraId = -1;
    QCameraTask *task = nullptr;
};

/// An integer register.
inline QByteArray intReg(const QByteArray &name, const QByteArray &address,
                         const QByteArray &length = "4", const QByteArray &tag = "IntReg",
                         const QByteArray &more = QByteArray())
{
    return "<" + tag + " Name=\"" + name + "\">" + more
        + (address.startsWith('<') ? address : "<Address>" + address + "</Address>") + "<Length>"
        + length + "</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>"
        + (tag.contains("Int") ? "<Endianess>BigEndian</Endianess>" : "") + "</" + tag + ">";
}

inline QByteArray integer(const QByteArray &name, const QByteArray &content)
{
    return "<Integer Name=\"" + name + "\">" + content + "</Integer>";
}
