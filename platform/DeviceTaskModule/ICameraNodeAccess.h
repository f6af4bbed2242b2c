#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"
#include "DeviceTaskModule/NodeValues.h"

#include <QString>

/// Access to the nodes and the register space of one opened device. QCameraTask implements it.
///
/// Every operation may be called on any thread, several at once: the module's workers read while the GUI
/// thread writes. A call may block for as long as the transport takes. None throws. A failed operation
/// answers false (or the value that its line names), leaves its out arguments untouched, writes a code to a
/// non-null `error` and keeps its text for QCameraTask::GetLastErrorRemark on the calling thread.
/// `report` false says that the caller reports the failure itself; `reserved` is always false.
class ICameraNodeAccess
{
public:
    virtual ~ICameraNodeAccess() = default;

    /// The camera id of the task.
    virtual int GetTaskCameraID() = 0;
    /// True while the client wants no prompts from this task; the module then swallows some messages.
    virtual bool IsPromptSuppressed() = 0;

    /// Copies the device's file `fileName` (GenICam FileSelector) to the host file `path`. 0 is success.
    virtual int ReadDeviceFile(const QString &path, const QString &fileName) = 0;
    /// Copies the host file `path` to the device's file `fileName`. 0 is success.
    virtual int WriteDeviceFile(const QString &path, const QString &fileName) = 0;
    /// Bytes of the transfer under way on this task. Takes no device lock. 0 is success; without a transfer
    /// the two numbers, preset to -1 by the caller, stay.
    virtual int GetFileAccessProgress(qint64 *total, qint64 *done) = 0;

    /// Integer, IntReg and every node that reads as an integer (IntSwissKnife, MaskedIntReg, StructEntry,
    /// IntConverter, Boolean, Enumeration).
    virtual bool GetIntegerValue(const QString &name, _NODE_INT_VALUE_ *out, int *error,
                                 bool report, bool reserved) = 0;
    /// Float nodes, in single precision.
    virtual bool GetFloatValue(const QString &name, _NODE_FLOAT_VALUE_ *out, int *error,
                               bool report, bool reserved) = 0;
    /// Enumeration nodes: the current value and the entries that the device offers now.
    virtual bool GetEnumerationValue(const QString &name, _NODE_ENUM_VALUE_ *out, int *error,
                                     bool report, bool reserved) = 0;
    /// Boolean nodes.
    virtual bool GetBooleanValue(const QString &name, bool *out, int *error, bool report,
                                 bool reserved) = 0;
    /// StringReg nodes. `maxLength`, when not null, gets the longest text that the node takes, in bytes.
    virtual bool GetStringValue(const QString &name, QString *out, qint64 *maxLength, int *error,
                                bool report, bool reserved) = 0;

    /// Raw bytes of the device's register space: `length` from `address` on, as they lie there.
    virtual bool ReadMemory(const qint64 &address, void *buffer, qint64 length, int *error) = 0;
    virtual bool WriteMemory(const qint64 &address, const void *buffer, qint64 length,
                             int *error) = 0;

    virtual bool SetIntegerValue(const QString &name, qint64 value, int *error) = 0;
    /// Runs a Command; it may return before the device has finished.
    virtual bool ExecuteCommand(const QString &name, int *error) = 0;
    virtual bool SetFloatValue(const QString &name, float value, int *error) = 0;
    /// Writes an Enumeration by its numeric value.
    virtual bool SetEnumerationValue(const QString &name, quint32 value, int *error) = 0;
    virtual bool SetBooleanValue(const QString &name, bool value, int *error) = 0;
    virtual bool SetStringValue(const QString &name, const QString &value, int *error) = 0;

    /// Drops what the task holds of this node, so that its next read goes to the device.
    virtual bool InvalidateNode(QString name) = 0;
    /// Present access mode, a NodeAccessMode. A non-null `error` is 0 after success. While the device does not
    /// answer: the last known mode, with an error.
    virtual int GetAccessMode(const QString &name, int *error) = 0;
};
