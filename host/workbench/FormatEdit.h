#pragma once

class QWidget;
class VexaPropertyTreeItem;

namespace FormatEdit {

/// Lets the user edit the text of a StringReg item in a dialog and writes it to the device. `pSourceData`, which may be
/// null, is the enumeration whose entries are offered as tags; a node with "TriggerHex" in its name gets bytes. Runs
/// events: the camera may be gone at the end. GUI thread.
void edit(QWidget *pParent, long lCameraID, VexaPropertyTreeItem *pText,
          const VexaPropertyTreeItem *pSourceData);

} // namespace FormatEdit
