#pragma once

#include "model/VexaPropertyTreeItem.h"

#include <QString>

class CTreeItemValue;
class QMutex;
class QWidget;
class VexaPropertyTreeDelegate;

/// Brings an editor up to date from a snapshot of its item's value, by element tag. Nothing that it does counts as an
/// edit. GUI thread.
namespace EditorFiller {

struct Request
{
    const VexaPropertyTreeDelegate *pDelegate = nullptr;
    QWidget *pEditor = nullptr;
    VexaPropertyTreeItem *pItem = nullptr;
    CTreeItemValue *pValue = nullptr; ///< the snapshot
    QString strNodeName;
    bool bReadOnly = true;
    bool bCached = false; ///< the value was read from the device
    bool bWriteOnly = false; ///< there is nothing to read (GenICam access mode WO)
    long lCameraID = -1; ///< the tree's own camera
    QMutex *pComboMutex = nullptr;
};

enum Result {
    RESULT_FILLED,
    RESULT_PUT_OFF, ///< the user is typing or choosing; the editor is to be filled when that ends
    RESULT_POSTED, ///< another refill is under way; the editor is to be filled after it
    RESULT_LEFT ///< nothing to fill it with: the camera has gone
};

Result fill(const Request &request);

/// Whether the value of an item with this tag comes from a read, so that it has none before the first.
bool isReadFromDevice(const QString &strTag);

} // namespace EditorFiller
