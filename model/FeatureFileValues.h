#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

/// One value of a feature file that is unlike the device's. Register differences carry the selector values behind
/// the name, "LUTValue[LUTIndex:1]".
struct FeatureDifference
{
    QString name;
    QString fileValue;
    QString deviceValue;
};

/// By category of the feature; the empty string holds those without one.
using FeatureDifferences = QMap<QString, QList<FeatureDifference>>;

/// Why a feature is not in a file, comes back changed, or did not get into the device.
enum class FeatureFileReason {
    // left out of an export
    Excluded, ///< by the list of its interface
    Address, ///< by its Representation: an IPv4 or MAC address
    Identity, ///< belongs to one device, or chooses what a user set command works on
    Command,
    Condition, ///< the device has not got it, or not in its present state
    NoLength, ///< its register has the length 0
    Unreadable, ///< neither a value nor registers could be read
    TurnSkipped, ///< the device did not take the selection of a polling parameter
    // exported, but not whole
    Inexact, ///< a number lost bits on its way through single precision
    FurtherWords, ///< only the first word of a register behind a converter is kept
    FewDigits, ///< six decimals are too few for the value
    TooLarge, ///< an integer beyond 32 bits is not read back
    Text, ///< the text does not come back as it is, or makes the file unreadable
    PresentSelection, ///< only for the present value of its selectors
    FileTooLarge, ///< the file as a whole is larger than what is read back
    // import
    NotCarriable, ///< the file's text is no number of the feature's type
    Refused, ///< the device refused the write
    NotTaken, ///< written, and still unlike the file's value
    NotWritable ///< its register cannot be written now
};

/// Results of an import, beside success and failure of the job.
enum FeatureFileResultCode : quint32 {
    FEATURE_FILE_OK = 0,
    FEATURE_FILE_NO_DEVICE = 0xE0000000,
    FEATURE_FILE_UNREADABLE = 0xE0000001, ///< no file, an empty one, or no XML
    FEATURE_FILE_NO_FEATURES = 0xE0000002,
    FEATURE_FILE_VERSION = 0xE0000003, ///< missing, or another software's: the user may go on
    FEATURE_FILE_MISMATCH = 0xE0000004, ///< another model, firmware or board
    FEATURE_FILE_STOPPED = 0xE0000005 ///< a write stopped the job, or a register dump is malformed
};

/// Why a job has not done what it was asked for.
enum class FeatureFileFailure {
    None,
    NoDevice,
    NoFirmware, ///< without the version of its firmware there is no file
    Device, ///< an access ended the export
    Memory,
    Stopped,
    Open, ///< of the file: its folder is missing or may not be written to
    Write,
    DiskFull
};

struct FeatureFileNote
{
    QString name;
    FeatureFileReason reason;
    QString detail; ///< a device's error, or the numbers in question; may be empty
};

/// What a job of feature files did, name by name.
struct FeatureFileReport
{
    FeatureFileFailure failure =
        FeatureFileFailure::None; ///< an import that failed has a result code in most cases
    QString failureDetail; ///< the node or the file, and what was said about it
    QList<FeatureFileNote> leftOut; ///< features that an export has nothing of
    QList<FeatureFileNote> remarks; ///< features that it has, but not whole
    QStringList changed; ///< features that an import wrote
    QList<FeatureFileNote> notImported; ///< values that it did not get into the device
    QStringList severalTimes; ///< names that stand in the file more than once: the last value wins
    bool bPollingParamWritten =
        false; ///< the device stands on another polling parameter than before
};

/// Entries done of all; both 0 without a job.
struct FeatureFileProgress
{
    int done = 0;
    int total = 0;
};
