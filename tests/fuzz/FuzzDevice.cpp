#include "FuzzDevice.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"

#include <QStringList>

#include <iterator>

namespace {

constexpr quint32 NOT_ACCESSIBLE = 0x90006104;
constexpr quint32 NO_SUCH_ADDRESS = 0x90006206;
constexpr quint32 NO_SUCH_NODE = 0x90006202;
constexpr quint32 GONE_FIRST = 0x90006000;
constexpr quint32 GONE_LAST = 0x90006002;

qint64 numberIn(const QDomElement &node, const char *tag, qint64 otherwise)
{
    bool ok = false;
    const qint64 number =
        node.firstChildElement(QLatin1String(tag)).text().trimmed().toLongLong(&ok, 0);
    return ok ? number : otherwise;
}

QByteArray pattern()
{
    static const QByteArray s_pattern = [] {
        constexpr int STEP = 37;
        QByteArray bytes;
        for (int place = 0; place < FuzzDevice::MEMORY_SIZE; ++place) {
            bytes += static_cast<char>(place * STEP);
        }
        return bytes;
    }();
    return s_pattern;
}

} // namespace

class QCameraTask::Private
{
public:
    FuzzDevice *device;
};

class QCameraBasicTask::Private
{
public:
    FuzzDevice *device;
};

/// Makes the contract's objects; whoever has this name may.
class CameraTaskFactory
{
public:
    static QCameraTask *task(FuzzDevice *device)
    {
        auto d = std::make_unique<QCameraTask::Private>();
        d->device = device;
        return new QCameraTask(std::move(d));
    }
    static QCameraBasicTask *basicTask(FuzzDevice *device)
    {
        auto d = std::make_unique<QCameraBasicTask::Private>();
        d->device = device;
        return new QCameraBasicTask(std::move(d));
    }
};

FuzzDevice::FuzzDevice(const QMap<QString, QDomElement> &nodes, unsigned int type)
    : m_nodes(nodes)
    , m_type(type)
    , m_memory(pattern())
    , m_task(CameraTaskFactory::task(this))
    , m_basic(CameraTaskFactory::basicTask(this))
{
}

FuzzDevice::~FuzzDevice() = default;

void FuzzDevice::stopAt(int access, std::atomic<bool> *stop)
{
    m_stopAt = access;
    m_stop = stop;
}

void FuzzDevice::count()
{
    if (++m_accesses == m_stopAt) {
        *m_stop = true;
    }
}

bool FuzzDevice::fail(quint32 code, int *error)
{
    m_gone = m_gone || (code >= GONE_FIRST && code <= GONE_LAST);
    if (error) {
        *error = static_cast<int>(code);
    }
    return false;
}

bool FuzzDevice::begin(const QString &name, const char *errorTag, int *error)
{
    count();
    const QDomElement element = node(name);
    if (m_gone) {
        return fail(GONE_FIRST, error);
    }
    if (element.isNull()) {
        return fail(NO_SUCH_NODE, error);
    }
    for (const char *tag : {"Error", errorTag}) {
        const QDomElement failing = element.firstChildElement(QLatin1String(tag));
        if (!failing.isNull()) {
            return fail(failing.text().toUInt(nullptr, 16), error);
        }
    }
    if (error) {
        *error = 0;
    }
    return true;
}

int FuzzDevice::accessMode(const QString &name, int *error)
{
    static const QStringList MODES = {QStringLiteral("NI"), QStringLiteral("NA"),
                                      QStringLiteral("WO"), QStringLiteral("RO")};
    if (!begin(name, "Error", error)) {
        return 0;
    }
    const int mode =
        MODES.indexOf(node(name).firstChildElement(QStringLiteral("ImposedAccessMode")).text());
    return mode < 0 ? int(NODE_RW) : mode;
}

bool FuzzDevice::beginRead(const QString &name, int *error)
{
    const int mode = accessMode(name, error);
    return mode >= NODE_RO || (!m_gone && mode > 0 && fail(NOT_ACCESSIBLE, error));
}

bool FuzzDevice::beginWrite(const QString &name, int *error)
{
    ++m_writes;
    const int mode = accessMode(name, error);
    return begin(name, "WriteError", error)
        && (mode == NODE_WO || mode == NODE_RW || fail(NOT_ACCESSIBLE, error));
}

QString FuzzDevice::valueOf(const QString &name) const
{
    const auto written = m_values.constFind(name);
    return written == m_values.constEnd()
        ? node(name).firstChildElement(QStringLiteral("Value")).text()
        : *written;
}

void FuzzDevice::setNumber(const QString &name, qint64 number)
{
    constexpr qint64 LAST_BITS = 7;
    const bool rounds = !node(name).firstChildElement(QStringLiteral("Rounds")).isNull();
    setValue(name, QString::number(rounds ? number & ~LAST_BITS : number));
}

bool FuzzDevice::access(qint64 address, qint64 length, void *read, const void *written, int *error)
{
    count();
    if (written) {
        ++m_writes;
        m_writtenAddresses.insert(address);
    }
    m_budget -= length > 0 && m_budget >= 0 ? length : 0;
    const bool isAligned = m_type != DEVICE_TYPE_GIGE || address % 4 == 0;
    if (m_gone) {
        return fail(GONE_FIRST, error);
    }
    if (address < 0 || length <= 0 || length > MEMORY_END - address || !isAligned || m_budget < 0) {
        return fail(NO_SUCH_ADDRESS, error);
    }
    char *memory = m_memory.data();
    for (qint64 done = 0; done < length; ++done) {
        char &byte = memory[(address + done) % MEMORY_SIZE];
        if (read) {
            static_cast<char *>(read)[done] = byte;
        } else {
            byte = static_cast<const char *>(written)[done];
        }
    }
    if (error) {
        *error = 0;
    }
    return true;
}

QCameraBasicTask::QCameraBasicTask(std::unique_ptr<Private> d)
    : d(std::move(d))
{
}

QCameraBasicTask::~QCameraBasicTask() = default;

QCameraTask *QCameraBasicTask::_CameraTak()
{
    return d->device->task();
}

unsigned int QCameraBasicTask::_GetDevType()
{
    return d->device->type();
}

unsigned int QCameraBasicTask::_GetCamSacnType()
{
    return d->device->type() == DEVICE_TYPE_GIGE ? 1 : 2;
}

QString QCameraBasicTask::_GetCameraModelName()
{
    return d->device->valueOf(QStringLiteral("DeviceModelName"));
}

QCameraTask::QCameraTask(std::unique_ptr<Private> d)
    : d(std::move(d))
{
}

QCameraTask::~QCameraTask() = default;

QString QCameraTask::GetLastErrorRemark()
{
    return QStringLiteral("refused");
}

unsigned int QCameraTask::deviceType()
{
    return d->device->type();
}

int QCameraTask::GetTaskCameraID()
{
    return 0;
}

bool QCameraTask::IsPromptSuppressed()
{
    return true;
}

int QCameraTask::ReadDeviceFile(const QString &, const QString &)
{
    return -1;
}

int QCameraTask::WriteDeviceFile(const QString &, const QString &)
{
    return -1;
}

int QCameraTask::GetFileAccessProgress(qint64 *, qint64 *)
{
    return -1;
}

bool QCameraTask::InvalidateNode(QString)
{
    return true;
}

bool QCameraTask::ExecuteCommand(const QString &name, int *error)
{
    return d->device->beginWrite(name, error);
}

int QCameraTask::GetAccessMode(const QString &name, int *error)
{
    return d->device->accessMode(name, error);
}

bool QCameraTask::GetIntegerValue(const QString &name, _NODE_INT_VALUE_ *out, int *error, bool,
                                  bool)
{
    constexpr qint64 MAX = 3;
    if (!d->device->beginRead(name, error)) {
        return false;
    }
    const QDomElement node = d->device->node(name);
    out->value = d->device->valueOf(name).trimmed().toLongLong(nullptr, 0);
    out->min = numberIn(node, "Min", 0);
    out->max = numberIn(node, "Max", MAX);
    out->inc = numberIn(node, "Inc", 1);
    return true;
}

bool QCameraTask::GetFloatValue(const QString &name, _NODE_FLOAT_VALUE_ *out, int *error, bool,
                                bool)
{
    return d->device->beginRead(name, error)
        && (out->value = d->device->valueOf(name).toFloat(), true);
}

bool QCameraTask::GetEnumerationValue(const QString &name, _NODE_ENUM_VALUE_ *out, int *error, bool,
                                      bool)
{
    if (!d->device->beginRead(name, error)) {
        return false;
    }
    const QDomElement node = d->device->node(name);
    const QString entryTag = QStringLiteral("EnumEntry");
    for (QDomElement entry = node.firstChildElement(entryTag);
         !entry.isNull() && out->count < std::size(out->entries);
         entry = entry.nextSiblingElement(entryTag)) {
        out->entries[out->count++] = static_cast<quint32>(numberIn(entry, "Value", 0));
    }
    out->count = static_cast<quint32>(numberIn(node, "Count", out->count));
    out->value = static_cast<quint32>(d->device->valueOf(name).toLongLong());
    return true;
}

bool QCameraTask::GetBooleanValue(const QString &name, bool *out, int *error, bool, bool)
{
    return d->device->beginRead(name, error)
        && (*out = d->device->valueOf(name).toLongLong() > 0, true);
}

bool QCameraTask::GetStringValue(const QString &name, QString *out, qint64 *, int *error, bool,
                                 bool)
{
    return d->device->beginRead(name, error) && (*out = d->device->valueOf(name), true);
}

bool QCameraTask::SetIntegerValue(const QString &name, qint64 value, int *error)
{
    return d->device->beginWrite(name, error) && (d->device->setNumber(name, value), true);
}

bool QCameraTask::SetFloatValue(const QString &name, float value, int *error)
{
    constexpr int ALL_DIGITS = 9;
    return d->device->beginWrite(name, error)
        && (d->device->setValue(name, QString::number(static_cast<double>(value), 'g', ALL_DIGITS)),
            true);
}

bool QCameraTask::SetEnumerationValue(const QString &name, quint32 value, int *error)
{
    return d->device->beginWrite(name, error) && (d->device->setNumber(name, value), true);
}

bool QCameraTask::SetBooleanValue(const QString &name, bool value, int *error)
{
    return d->device->beginWrite(name, error) && (d->device->setNumber(name, value ? 1 : 0), true);
}

bool QCameraTask::SetStringValue(const QString &name, const QString &value, int *error)
{
    return d->device->beginWrite(name, error) && (d->device->setValue(name, value), true);
}

bool QCameraTask::ReadMemory(const qint64 &address, void *buffer, qint64 length, int *error)
{
    return d->device->access(address, length, buffer, nullptr, error);
}

bool QCameraTask::WriteMemory(const qint64 &address, const void *buffer, qint64 length, int *error)
{
    return d->device->access(address, length, nullptr, buffer, error);
}
