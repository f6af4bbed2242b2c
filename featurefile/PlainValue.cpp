#include "featurefile/PlainValue.h"

#include "DeviceTaskModule/QCameraTask.h"
#include "model/EnumRecord.h"

#include <QDebug>

namespace {

using PlainValue::Outcome;
using Reader = Outcome (*)(QCameraTask *, const QString &, QString *, int *, bool *);
using Writer = Outcome (*)(QCameraTask *, const QString &, const QString &, int *);

Outcome outcomeOf(bool done)
{
    return done ? Outcome::Done : Outcome::Failed;
}

Outcome readBoolean(QCameraTask *task, const QString &name, QString *text, int *error, bool *)
{
    bool value = false;
    const bool done = task->GetBooleanValue(name, &value, error, false, false);
    *text = QString::number(value ? 1 : 0);
    return outcomeOf(done);
}

Outcome writeBoolean(QCameraTask *task, const QString &name, const QString &text, int *error)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok ? outcomeOf(task->SetBooleanValue(name, number > 0, error)) : Outcome::NoNumber;
}

Outcome readInteger(QCameraTask *task, const QString &name, QString *text, int *error, bool *exact)
{
    _NODE_INT_VALUE_ value = {};
    const bool done = task->GetIntegerValue(name, &value, error, false, false);
    *text = QString::number(value.value);
    *exact = value.value == static_cast<qint32>(value.value);
    return outcomeOf(done);
}

Outcome writeInteger(QCameraTask *task, const QString &name, const QString &text, int *error)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok ? outcomeOf(task->SetIntegerValue(name, number, error)) : Outcome::NoNumber;
}

Outcome readEnumeration(QCameraTask *task, const QString &name, QString *text, int *error, bool *)
{
    const EnumRecord record;
    if (!record) {
        return Outcome::NoMemory;
    }
    const bool done = task->GetEnumerationValue(name, record.get(), error, false, false);
    *text = QString::number(record->value);
    return outcomeOf(done);
}

Outcome writeEnumeration(QCameraTask *task, const QString &name, const QString &text, int *error)
{
    bool ok = false;
    const quint32 number = text.toUInt(&ok);
    return ok ? outcomeOf(task->SetEnumerationValue(name, number, error)) : Outcome::NoNumber;
}

Outcome readFloat(QCameraTask *task, const QString &name, QString *text, int *error, bool *exact)
{
    constexpr int DECIMALS = 6;
    _NODE_FLOAT_VALUE_ value = {};
    const bool done = task->GetFloatValue(name, &value, error, false, false);
    *text = QString::number(static_cast<double>(value.value), 'f', DECIMALS);
    *exact = text->toFloat() == value.value;
    return outcomeOf(done);
}

Outcome writeFloat(QCameraTask *task, const QString &name, const QString &text, int *error)
{
    bool ok = false;
    const float number = text.toFloat(&ok);
    if (!ok) {
        return Outcome::NoNumber;
    }
    const bool done = task->SetFloatValue(name, number, error);
    if (!done) {
        qInfo().noquote() << QLatin1String("set node failed ") + name;
    }
    return outcomeOf(done);
}

Outcome readString(QCameraTask *task, const QString &name, QString *text, int *error, bool *)
{
    return outcomeOf(task->GetStringValue(name, text, nullptr, error, false, false));
}

Outcome writeString(QCameraTask *task, const QString &name, const QString &text, int *error)
{
    return outcomeOf(task->SetStringValue(name, text, error));
}

struct TypeRow
{
    const char *type;
    Reader read;
    Writer write;
};

const TypeRow *rowOf(const QString &type)
{
    static const TypeRow ROWS[] = {
        {"Boolean", readBoolean, writeBoolean}, {"Integer", readInteger, writeInteger},
        {"IntReg", readInteger, writeInteger},  {"Enumeration", readEnumeration, writeEnumeration},
        {"Float", readFloat, writeFloat},       {"StringReg", readString, writeString}};
    for (const TypeRow &row : ROWS) {
        if (type == QLatin1String(row.type)) {
            return &row;
        }
    }
    return nullptr;
}

} // namespace

PlainValue::Outcome PlainValue::read(QCameraTask *task, const QString &type, const QString &name,
                                     QString *text, int *error, bool *exact)
{
    bool isExact = true;
    const TypeRow *row = rowOf(type);
    const Outcome outcome = row ? row->read(task, name, text, error, &isExact) : Outcome::OtherType;
    if (exact) {
        *exact = isExact;
    }
    return outcome;
}

PlainValue::Outcome PlainValue::write(QCameraTask *task, const QString &type, const QString &name,
                                      const QString &text, int *error)
{
    const TypeRow *row = rowOf(type);
    return row ? row->write(task, name, text, error) : Outcome::OtherType;
}
