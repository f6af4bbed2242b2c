#pragma once

#include <QString>

class QCameraTask;

/// What a box or a prompt of the tree looks like (QFunction::ShowMessage, ShowMessage of the tree).
enum MessageHint { HINT_ADVICE = 1, HINT_NOTICE = 2, HINT_FAILURE = 3 };

/// The words of writes. GUI thread.
namespace WriteMessages {

/// In the place of an error code, for a write or a command that failed without one.
constexpr int NO_CODE = -1;

/// In the client's language.
QString translated(const char *key);
/// Why a value was not written.
QString failed(const QString &nodeName, const QString &shownValue, const QString &remark);
/// The same with the remark of the task's last failure on this thread.
QString failed(const QString &nodeName, const QString &shownValue, QCameraTask &task);
/// The text with a line for the error code behind it.
QString withErrorLine(const QString &text, int error);

/// The log's line of a value that the device took.
QString logLine(const QString &nodeName, const QString &shownValue, long int cameraId);

} // namespace WriteMessages
