#pragma once

class QCameraTask;

/// The node-level task of an opened camera, null for -1 and for one that has gone. It holds until the calling thread's
/// next look-up, so it is asked for anew for every operation. Any thread.
QCameraTask *cameraTaskOf(long int cameraId);
