#pragma once

#include "host/simulator/DeviceBehaviour.h"

#include <QByteArray>
#include <QString>

#include <memory>

class FeatureTable;
struct DescriptionHeader;

/// A built-in device before it is put behind a core.
struct BuiltInDevice
{
    QByteArray m_description;
    QByteArray m_translations;
    std::unique_ptr<RegisterMemory> m_pMemory;
    std::unique_ptr<DeviceBehaviour> m_pBehaviour;
    QString m_strModel;
    QString m_strSerial;
    quint32 m_nIpv4 = 0; ///< 0 for devices without a network
    unsigned int m_nDeviceType = 1; ///< 1 GigE, 4 U3V, 8 CL
    unsigned int m_nScanType = 1; ///< 1 area scan, 4 line scan
};

/// Description, texts and memory from one table. Serial number, address and types are left to the caller.
BuiltInDevice builtDevice(const FeatureTable &table, const DescriptionHeader &header,
                          std::unique_ptr<DeviceBehaviour> behaviour);
