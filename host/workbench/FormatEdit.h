#pragma once

#include <QString>

class QWidget;
class VexaPropertyTreeItem;

namespace FormatEdit {

/// Why a text is not to be written to this node, for the user; empty when it may be.
using Objection = QString (*)(const QString &strNode, const QString &strText);

/// Lets the user edit the text of a StringReg item in a dialog and writes it to the device. `pSourceData`, which may be
/// null, is the enumeration whose entries are offered as tags; a node with "TriggerHex" in its name gets bytes. Runs
/// events: the camera may be gone at the end. GUI thread.
void edit(QWidget *pParent, long lCameraID, VexaPropertyTreeItem *pText,
          const VexaPropertyTreeItem *pSourceData, Objection objection);

} // namespace FormatEdit
