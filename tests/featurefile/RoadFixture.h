#pragma once

#include "featurefile/FeatureFileFormat.h"
#include "tests/support/ModuleFixture.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <algorithm>

/// A camera over a number and a table behind a selector. Its first update has ended, and the record of an export is at
/// hand.
struct RoadFixture
{
    RoadFixture()
    {
        auto device = SimulatedDevices::fromDescription(description(), "road",
                                                        SimulatorControl::MemoryPattern::Zero);
        device.control->poke(0x100, "V1");
        device.control->poke(0x1000, QByteArray::fromHex("00000280"));
        camera = fixture.open(device);
        if (!ModuleFixture::waitForFirstUpdate(camera)) {
            return;
        }
        QSignalSpy ended(camera.tree, &VexaFeatureTree::SigEndExportFeature);
        tree().SaveCamFeatures(true, folder.filePath("bag"));
        QFile bag(folder.filePath("bag"));
        if (ended.wait(30000) && ended.first().first().toBool() && bag.open(QIODevice::ReadOnly)) {
            record = QString::fromUtf8(bag.readAll());
            text = record.section(FeatureFileFormat::BAG_FILE_MARKER, 1, 1);
            control().setLogging(true);
        }
    }
    static QByteArray description()
    {
        const QByteArray rest = "<AccessMode>RW</AccessMode><pPort>Device</pPort>";
        const QByteArray word = "<Length>4</Length>" + rest + "<Endianess>BigEndian</Endianess>";
        return descriptionOf(
            {"DeviceFirmwareVersion", "Width", "LUTIndex", "LUTValue"},
            "<StringReg Name=\"DeviceFirmwareVersion\"><Address>0x100</Address><Length>16</Length>"
                + rest + "</StringReg><Integer Name=\"Width\"><pValue>WidthReg</pValue></Integer>"
                + "<IntReg Name=\"WidthReg\"><Address>0x1000</Address>" + word + "</IntReg>"
                + "<Integer Name=\"LUTIndex\"><Value>0</Value><Min>0</Min><Max>3</Max><Inc>1</Inc>"
                + "<pSelected>LUTValue</pSelected></Integer>"
                + "<Integer Name=\"LUTValue\"><pValue>LUTReg</pValue></Integer>"
                + "<IntReg Name=\"LUTReg\"><Address>0x2000</Address>"
                + "<pAddress>LUTAddress</pAddress>" + word + "</IntReg>"
                + "<IntSwissKnife Name=\"LUTAddress\"><pVariable Name=\"I\">LUTIndex</pVariable>"
                + "<Formula>I*4</Formula></IntSwissKnife>");
    }
    VexaFeatureTree &tree() { return *camera.tree; }
    SimulatorControl &control() { return *camera.device.control; }
    /// Makes the device differ from the file in its width, and forgets what was asked of it.
    void change()
    {
        control().poke(0x1000, QByteArray::fromHex("00000100"));
        control().clearAccessLog();
    }
    int width() { return control().peek(0x1002, 2).toHex().toInt(nullptr, 16); }
    int writes()
    {
        const auto log = control().accessLog();
        return int(std::count_if(log.cbegin(), log.cend(), [](const SimulatorAccess &access) {
            return access.kind == SimulatorAccess::Write;
        }));
    }

    ModuleFixture fixture;
    QTemporaryDir folder;
    ModuleFixture::Camera camera;
    QString record;
    QString text; ///< of the device as it was opened; empty when something went wrong
};
