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
    qint64 integer(const QString &name);
    double number(const QString &name);
    bool boolean(const QString &name);
    QString text(const QString &name);
    /// The value by the kind of the node: Integer, Float, Boolean, Enumeration (number) or string.
    QVariant value(const QString &name);
    bool setInteger(const QString &name, qint64 value);
    bool setNumber(const QString &name, double value);
    bool setText(const QString &name, const QString &value);
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
    /// What a getter of Aravis answers, with the error that it leaves behind taken over.
    template<class Getter>
    auto ask(const Getter &get)
    {
        GError *error = nullptr;
        const auto answer = get(&error);
        finish(error);
        return answer;
    }
};
