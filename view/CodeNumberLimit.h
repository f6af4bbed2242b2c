#pragma once

#include <QString>
#include <QtGlobal>

/// Upper limit of a node that counts codes: what the client has set for this camera, else `nMaximum`. GUI thread.
qint64 codeNumberLimit(long lCameraID, const QString &strNodeName, qint64 nMaximum);
