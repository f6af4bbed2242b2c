#pragma once

#include <QVariant>

class QWidget;
class VexaPropertyTreeDelegate;
class VexaPropertyTreeItem;

/// The side of the editors that leads to the model: their commit signals and the value that they hold. GUI thread.
namespace EditorCommit {

/// Connects the editor's commit signals to the delegate, once however often it is called.
void connectSignals(QWidget *pEditor, const VexaPropertyTreeDelegate *pDelegate);
void disconnectSignals(QWidget *pEditor, const VexaPropertyTreeDelegate *pDelegate);

/// Whether the user has changed the editor since its last refill (`bRefillPutOff`: one was put off since): ending an
/// edit that is none writes nothing.
bool isChanged(const QWidget *pEditor, bool bRefillPutOff);

/// What setModelData does with an editor.
struct Result
{
    bool bWrite = false; ///< false: the editor was refused and shows the old value again
    bool bStartTimer = false; ///< the command timer runs after the write
    QVariant value;
};
Result takeValue(QWidget *pEditor, const VexaPropertyTreeItem *pItem);

/// Puts the last value from the device back.
void rollback(QWidget *pEditor);
/// The user has begun to type in the editor, or to choose in its list, and has not committed.
bool hasUserText(const QWidget *pEditor);

/// Text format of a date and time on the device.
constexpr char DATE_FORMAT[] = "yyyy:MM:dd:HH:mm:ss";

} // namespace EditorCommit
