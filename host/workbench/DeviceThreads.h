#pragma once

class QThreadPool;

/// Threads for calls that talk to a device and may hang there. They are apart from the threads of Qt's own pool, which
/// the trees use: a device that hangs must not keep other work waiting. Any thread.
QThreadPool *deviceThreads();
