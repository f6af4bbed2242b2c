#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

class QString;

/// Hears of changed features of one tree. Added with VexaFeatureTree::AddFeatureObserverable; called on the
/// GUI thread, with no lock of the module held, so an observer may call back into the tree.
class DEVICETASKMODULE_API VexaFeatureObserverable
{
public:
    virtual ~VexaFeatureObserverable();
    /// `fromUiJson` is the flag that VexaPropertyTreeItem::notifyViewUpdate was given.
    virtual void notifyFeatureChanged(const QString &nodeName, bool fromUiJson) = 0;
    /// The tree of this camera goes; it holds the observer no longer.
    virtual void notifyFeatureTreeReleased(long int cameraId) = 0;
};
