#pragma once

#include "host/simulator/BuiltInDevice.h"
#include "host/simulator/sfnc/StandardRows.h"

/// What tells one area-scan camera from the next.
struct AreaCameraIdentity
{
    QByteArray m_strSerial;
    QByteArray m_strUserId;
    NetworkIdentity m_network;
};

/// An area-scan camera with GigE Vision interface and the features of SFNC.
BuiltInDevice makeAreaCamera(int instance);
/// Its table alone.
FeatureTable areaCameraTable(const AreaCameraIdentity &identity);

/// Its files.
QVector<DeviceFile> areaCameraFiles();

/// The rows of this camera alone, by SFNC category; each is a file of its own.
void addDeviceRows(FeatureTable &table, const AreaCameraIdentity &identity);
void addImageFormatRows(FeatureTable &table);
void addAcquisitionRows(FeatureTable &table);
void addCorrectionRows(FeatureTable &table); ///< with LUTControl
void addChunkEventRows(FeatureTable &table);
void addTransportLayerRows(FeatureTable &table, const AreaCameraIdentity &identity);
