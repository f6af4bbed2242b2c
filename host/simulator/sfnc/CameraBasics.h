#pragma once

#include "host/simulator/description/FeatureTable.h"

/// Who a camera is, for its features of DeviceControl.
struct CameraInfo
{
    QByteArray m_strModel;
    QByteArray m_strInfo;
    QByteArray m_strFirmware;
    QByteArray m_strSerial;
    QByteArray m_strUserId;
    int m_nScanType = 0; ///< entry of DeviceScanType: 0 area scan, 1 line scan
    int m_nBoardType = 0;
};

/// DeviceTemperature over a register with the tenths of a degree of each entry of DeviceTemperatureSelector, which is
/// there already.
void addTemperatureRows(FeatureTable &table, RegisterSpec tenths);
/// AcquisitionStart and AcquisitionStop.
void addStartStopRows(FeatureTable &table);

/// Short forms of the categories that every camera has. Registers lie from 0x10000 on.
void addCameraInfoRows(FeatureTable &table, const CameraInfo &info);
/// Mode, start and stop, exposure, into AcquisitionControl, which it begins.
void addCameraAcquisitionRows(FeatureTable &table);
/// Into TriggerControl; `selectors` are the entries of TriggerSelector.
void addCameraTriggerRows(FeatureTable &table,
                          const QVector<QPair<const char *, const char *>> &selectors);
/// PayloadSize and TLParamsLocked; begins TransportLayerControl. Needs the nodes of width, height and pixel format.
void addCameraTransportRows(FeatureTable &table);
/// Width, height, offset and pixel format; begins ImageFormatControl.
void addCameraImageRows(FeatureTable &table, int sensorWidth, int maxHeight);
