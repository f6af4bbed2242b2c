#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

#include <atomic>

/// One channel of a multi-channel device.
class DEVICETASKMODULE_API QChannelTask
{
public:
    QChannelTask();
    ~QChannelTask();

    /// Tells the channel whether the device offers code reading. The tree calls it at each opening, GUI thread.
    void SetContainDMCode(bool contains);
    /// What was told last; false at first. For the client, any thread.
    bool ContainsDMCode() const;

private:
    std::atomic<bool> m_bContainsDMCode{false};
};
