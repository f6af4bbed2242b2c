#pragma once

#include "host/simulator/DeviceBehaviour.h"

#include <QByteArray>
#include <QString>

#include <memory>

class FeatureTable;

/// A built-in device before it is put behind a core.
struct BuiltInDevice
{
    QByteArray m_description;
    QByteArray m_translations;
    std::unique_ptr<RegisterMemory> m_pMemory;
    std::unique_ptr<DeviceBehaviour> m_pBehaviour;
    QString m_strModel;
    QString m_strSerial;
    quint32 m_nIpv4 = 0;
};

/// What tells one area-scan camera from the next.
struct AreaCameraIdentity
{
    QByteArray m_strSerial;
    QByteArray m_strUserId;
    quint32 m_nIpv4 = 0;
    quint64 m_nMac = 0;
};

/// An area-scan camera with GigE Vision interface and the features of SFNC.
BuiltInDevice makeAreaCamera(int instance);
/// Its table alone.
FeatureTable areaCameraTable(const AreaCameraIdentity &identity);

/// The rows by SFNC category; each is a file of its own.
void addDeviceRows(FeatureTable &table, const AreaCameraIdentity &identity);
void addImageFormatRows(FeatureTable &table);
void addAcquisitionRows(FeatureTable &table);
void addAnalogRows(FeatureTable &table);
void addCorrectionRows(FeatureTable &table); ///< with LUTControl
void addDigitalIoRows(FeatureTable &table);
void addCounterTimerRows(FeatureTable &table); ///< with EncoderControl
void addChunkEventRows(FeatureTable &table);
void addFileAccessRows(FeatureTable &table);
void addUserSetRows(FeatureTable &table);
void addTransportLayerRows(FeatureTable &table, const AreaCameraIdentity &identity);
