#pragma once

#include "host/simulator/BuiltInDevice.h"
#include "host/simulator/sfnc/StandardRows.h"

#include <optional>

/// What the light of a reader is made of, and which nodes serve it.
struct ReaderLight
{
    int m_nSegments = 4; ///< 3, 4 or 6: the entries of LightingSelector ahead of "All"
    bool m_bAll = true; ///< the entry "All", whose number is that of the segments
    bool m_bBitmap = true; ///< LightingBitmap
    bool m_bCommands = true; ///< LightingAllOn and LightingAllOff
    bool m_bStray = false; ///< a last entry that is no segment
};

/// What tells one code reader from the next.
struct CodeReaderIdentity
{
    QByteArray m_strSerial;
    QByteArray m_strUserId;
    NetworkIdentity m_network;
    ReaderLight m_light;
    qint64 m_nProductType = 3; ///< of the node ProductType
};

constexpr int kReaderUserSets = 5; ///< the factory's and four of the user
constexpr int kPollingParams = 8;
constexpr int kPollingLights = 4; ///< segments that a polling parameter switches
constexpr int kAlgoRegions = 8;

/// A code reader with GigE Vision interface: the features of SFNC that it shares with cameras and those of the
/// reader family.
BuiltInDevice makeCodeReader(int instance);
/// The same with the names that readers of the generation before have for some features.
BuiltInDevice makeOlderCodeReader(int instance);
/// One of another product family, with a light that is a single switch.
BuiltInDevice makeCodeReaderOfProduct(int instance, qint64 productType);
/// One that cannot search for good settings as a whole: without the command SmartTune.
BuiltInDevice makeCodeReaderWithoutTuning(int instance);
/// The light that an id stands for: "code-reader-light", 3, 4 or 6, and any of "-all", "-bitmap", "-commands" and
/// "-stray" in this order. None for any other id.
std::optional<ReaderLight> readerLightOf(const QString &id);
BuiltInDevice makeCodeReaderWithLight(const ReaderLight &light, int instance);
/// Its table alone.
FeatureTable codeReaderTable(const CodeReaderIdentity &identity);
/// The registers of the measures of print quality.
QVector<QByteArray> readerQualityRegisters();
/// Its files.
QVector<DeviceFile> codeReaderFiles();

/// The rows by category; each is a file of its own.
void addReaderDeviceRows(FeatureTable &table, const CodeReaderIdentity &identity);
void addReaderImageRows(FeatureTable &table);
void addReaderAcquisitionRows(FeatureTable &table); ///< with exposure and gain
void addReaderTriggerRows(FeatureTable &table);
void addReaderIoRows(FeatureTable &table); ///< with strobe, flash and counters
void addReaderCodeRows(FeatureTable &table);
void addReaderAlgorithmRows(FeatureTable &table); ///< with the regions
void addReaderQualityRows(FeatureTable &table);
void addReaderLightingRows(FeatureTable &table, const ReaderLight &light);
void addReaderFocusRows(FeatureTable &table); ///< with tuning
void addReaderPollingRows(FeatureTable &table);
void addReaderCommunicationRows(FeatureTable &table); ///< with FTP
void addReaderOutputTextRows(FeatureTable &table);
void addReaderFormatRows(FeatureTable &table);
void addReaderTriggerTextRows(FeatureTable &table);
void addReaderScreenRows(FeatureTable &table); ///< with storage and pictures
void addReaderUserSetRows(FeatureTable &table);
void addReaderTransportRows(FeatureTable &table, const CodeReaderIdentity &identity);
