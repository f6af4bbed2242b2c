#pragma once

#include "host/simulator/description/FeatureTable.h"

struct DeviceFile;

/// The network interface of a GigE Vision device.
struct NetworkIdentity
{
    quint32 m_nIpv4 = 0;
    quint64 m_nMac = 0;
    QByteArray m_strModel;
};

/// Categories of SFNC that several of the devices have in the same form. Each lays its registers from a base of its
/// own, below 0x20000 or from 0x40000; the bootstrap registers of GigE Vision lie below 0x1000.
void addAnalogRows(FeatureTable &table); ///< needs the node ColorSensorFitted; with BasicControl
void addDigitalIoRows(FeatureTable &table);
void addCounterTimerRows(FeatureTable &table);
void addEncoderRows(FeatureTable &table);
void addLutRows(FeatureTable &table);
void addReadoutRows(FeatureTable &table);
void addFileAccessRows(FeatureTable &table, const QVector<DeviceFile> &files);
void addUserSetRows(FeatureTable &table);
void addSequencerRows(FeatureTable &table);
/// Into the category TransportLayerControl.
void addGigEVisionRows(FeatureTable &table, const NetworkIdentity &identity);
