#pragma once

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "featurefile/EvalContext.h"
#include "model/FeatureTreeBuilder.h"
#include "model/NodeDependencyMaps.h"
#include "tests/support/ModuleFixture.h"

#include <QDomDocument>

/// An open simulated device and what a tree knows of its description.
struct DescribedCamera
{
    explicit DescribedCamera(const SimulatedDevices::Simulated &simulated)
        : device(simulated)
    {
        device.control->setQuiet(true);
        cameraId = host.openCamera(*device.source).cameraId;
        basic = QTaskManager::Instance()->GetTaskByID(cameraId);
        task = basic ? basic->_CameraTak() : nullptr;
        document.setContent(device.control->description());
        builder.GenerateDomElementMap(document.documentElement());
    }
    /// The selectors of these features.
    void takeLinks(const QStringList &features)
    {
        maps.generate(document.documentElement(), builder.elementMap(), features);
        for (const auto &record : maps.pSelectedRecords()) {
            links.append({record.first, record.second});
        }
    }

    SimulatedDevices::Simulated device;
    CameraHost host;
    QDomDocument document;
    FeatureTreeBuilder builder;
    NodeDependencyMaps maps;
    QVector<SelectedLink> links;
    long int cameraId = -1;
    QCameraBasicTask *basic = nullptr;
    QCameraTask *task = nullptr;
};

/// A device over these elements, with the feature X, and an interpreter of the same description beside it.
struct EvalFixture : DescribedCamera
{
    explicit EvalFixture(const QByteArray &elements)
        : DescribedCamera(SimulatedDevices::fromDescription(descriptionOf({"X"}, elements), "eval",
                                                            SimulatorControl::MemoryPattern::Zero))
    {
        takeLinks(builder.elementMap().keys());
    }

    EvalContext context(bool isGigE = true) const
    {
        return EvalContext(builder.elementMap(), links, task, isGigE, nullptr);
    }
    void poke(quint64 address, const char *hex)
    {
        device.control->poke(address, QByteArray::fromHex(hex));
    }
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
