#pragma once

#include "host/simulator/SimulatedDevices.h"

#include <QString>
#include <QVariant>

#include <arv.h>

/// A handle on a simulated device and the nodes of its description, as a client of Aravis has them. Each operation
/// leaves its error text in m_strError, empty on success.
class OpenedDevice
{
public:
    explicit OpenedDevice(const SimulatedDevices::Simulated &simulated);
    ~OpenedDevice();
    OpenedDevice(const OpenedDevice &) = delete;
    OpenedDevice &operator=(const OpenedDevice &) = delete;

    ArvGcNode *node(const QString &name) const;
    /// By the kind of the node: of an Enumeration the number, of what has no value an invalid one.
    QVariant value(const QString &name);
    bool set(const QString &name, const QVariant &value);
    bool execute(const QString &name);
    bool read(quint64 address, quint32 length, QByteArray *bytes = nullptr);
    bool write(quint64 address, const QByteArray &bytes);
    bool flag(gboolean (*question)(ArvGcFeatureNode *, GError **), const QString &name);

    ArvDevice *m_pDevice = nullptr;
    QString m_strError;
    int m_nErrorCode = -1;

private:
    /// Takes the error over; true when there was none.
    bool finish(GError *error);
};
