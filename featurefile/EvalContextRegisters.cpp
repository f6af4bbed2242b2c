// Addresses of registers, and what lies there.

#include "DeviceTaskModule/QCameraTask.h"
#include "featurefile/EvalContext.h"
#include "featurefile/EvalVisit.h"
#include "featurefile/RegisterWords.h"
#include "model/ElementWalk.h"

#include <algorithm>

namespace {

constexpr int HIGHEST_BIT = 31;
constexpr qint64 WORD = 4;

} // namespace

/// Chunks and events have registers too, which are not in the device's register space.
bool EvalContext::isOnDevicePort(const QDomElement &reg)
{
    const QString portName = ElementWalk::text(reg.firstChildElement(QStringLiteral("pPort")));
    const QDomElement port = node(portName);
    if (portName.isEmpty()) {
        return true;
    }
    if (port.tagName() != QLatin1String("Port")) {
        return false;
    }
    const QStringList foreign = {QStringLiteral("ChunkID"), QStringLiteral("pChunkID"),
                                 QStringLiteral("EventID")};
    return std::none_of(foreign.cbegin(), foreign.cend(), [&port](const QString &tag) {
        return !port.firstChildElement(tag).isNull();
    });
}

bool EvalContext::addressParts(const QDomElement &reg, QVector<EvalResults> &parts)
{
    const QString name = ElementWalk::name(reg);
    if (!isOnDevicePort(reg)) {
        return fail(
            QStringLiteral("getIntRegAddress  failed:%1 its port is not the device's").arg(name));
    }
    for (QDomElement child = reg.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QString tag = child.tagName();
        if (tag == QLatin1String("pIndex") || tag == QLatin1String("IntSwissKnife")) {
            return fail(
                QStringLiteral("getIntRegAddress  failed:%1 %2 in an address is not supported")
                    .arg(name, tag));
        }
        if (tag != QLatin1String("Address") && tag != QLatin1String("pAddress")) {
            continue;
        }
        const QString text = ElementWalk::text(child);
        EvalResults part;
        qint64 number = 0;
        if (isNumber(text, &number)) {
            part.append(_FORMULA_RESULT_::of(static_cast<double>(number)));
        } else if (!getValue(node(text), part) || part.isEmpty()) {
            return fail(QStringLiteral("getIntRegAddress getValue failed:%1").arg(text));
        }
        parts.append(part);
    }
    return true;
}

bool EvalContext::getIntRegAddress(const QDomElement &reg, EvalResults &out)
{
    const Visit visit(this);
    QVector<EvalResults> parts;
    if (!visit.isAllowed() || !addressParts(reg, parts)) {
        return false;
    }
    const auto single = std::find_if(parts.begin(), parts.end(),
                                     [](const EvalResults &part) { return part.size() == 1; });
    _FORMULA_RESULT_ base;
    const bool hasBase = single != parts.end();
    if (hasBase) {
        base = single->first();
        parts.erase(single);
    }
    const int count = parts.isEmpty() ? 0 : parts.first().size();
    const bool isEven = std::all_of(parts.cbegin(), parts.cend(), [count](const EvalResults &part) {
        return part.size() == count;
    });
    if (!hasBase || !isEven) {
        return fail(QStringLiteral("getIntRegAddress  failed:%1").arg(ElementWalk::name(reg)));
    }
    for (int index = 0; index < count; ++index) {
        _FORMULA_RESULT_ sum = base;
        for (const EvalResults &part : qAsConst(parts)) {
            sum.value += part.at(index).value;
            sum.meant += part.at(index).meant;
            sum.variables += part.at(index).variables;
        }
        out.append(sum);
    }
    if (out.isEmpty()) {
        out.append(base);
    }
    for (const _FORMULA_RESULT_ &address : qAsConst(out)) {
        constexpr double END_OF_ADDRESSES = 9223372036854775808.0;
        const double used = static_cast<double>(address.value);
        if (!(used >= 0.0 && used < END_OF_ADDRESSES)) {
            return fail(QStringLiteral("getIntRegAddress  failed:%1 no address:%2")
                            .arg(ElementWalk::name(reg), addressText(address)));
        }
        if (used != address.meant) {
            addRemark(m_strFeature, FeatureFileReason::Inexact,
                      QStringLiteral("address %1 was meant, %2 is used")
                          .arg(QString::number(address.meant, 'f', 0), addressText(address)));
        }
    }
    return true;
}

QString EvalContext::addressText(const _FORMULA_RESULT_ &address)
{
    return QString::number(static_cast<double>(address.value), 'f', 0);
}

bool EvalContext::readMemory(qint64 address, void *buffer, qint64 length)
{
    return countVisit() && m_pTask && address >= 0 // of a word across two aligned ones
        && m_pTask->ReadMemory(address, buffer, length, nullptr);
}

bool EvalContext::getRegisterWords(const QDomElement &reg, EvalResults &out)
{
    const QString name = ElementWalk::name(reg);
    EvalResults addresses;
    if (!getIntRegAddress(reg, addresses)) {
        return fail(QStringLiteral("getIntRegAddress failed:%1").arg(name));
    }
    qint64 length = 0;
    if (isNumber(reg.firstChildElement(QStringLiteral("Length")).text(), &length)
        && length != WORD) {
        addRemark(name, FeatureFileReason::Inexact,
                  QStringLiteral("%1 bytes of a register of %2 are read").arg(WORD).arg(length));
    }
    for (const _FORMULA_RESULT_ &address : qAsConst(addresses)) {
        quint32 word = 0;
        if (!readMemory(addressText(address).toLongLong(), &word, WORD)) {
            return fail(QStringLiteral("getIntRegAddress failed:%1 GetValueFromReg failed addr%2")
                            .arg(name, addressText(address)));
        }
        out.append(_FORMULA_RESULT_::of(m_bGigE ? RegisterWords::swapped(word) : word,
                                        address.formula, address.variables));
    }
    return true;
}

bool EvalContext::getBitField(const QDomElement &node, EvalResults &out)
{
    QDomElement converter;
    const QDomElement reg = findRegElement(node, &converter);
    qint64 length = 0;
    EvalResults addresses;
    if (reg.isNull() || registerLength(reg, &length, true) != Length::Known
        || !getIntRegAddress(reg, addresses)) {
        return false;
    }
    RegisterBuffer buffer;
    const QDomElement bit = node.firstChildElement(QStringLiteral("Bit"));
    const QDomElement lsb = node.firstChildElement(QStringLiteral("LSB"));
    const QDomElement msb = node.firstChildElement(QStringLiteral("MSB"));
    if (bit.isNull() && (lsb.isNull() || msb.isNull())) {
        return false;
    }
    const int first = ElementWalk::text(bit.isNull() ? lsb : bit).toInt();
    const int last = bit.isNull() ? ElementWalk::text(msb).toInt() : first;
    const int left = HIGHEST_BIT - qMax(first, last);
    const int right = left + qMin(first, last);
    if (left < 0 || qMin(first, last) < 0) {
        return fail(QStringLiteral("%1 has no bits %2 to %3 in a word")
                        .arg(ElementWalk::name(node))
                        .arg(first)
                        .arg(last));
    }
    for (const _FORMULA_RESULT_ &address : qAsConst(addresses)) {
        if (!buffer.prepare(length)) {
            return fail(QStringLiteral("malloc size  failed:%1 size:%2")
                            .arg(ElementWalk::name(node))
                            .arg(length));
        }
        if (!readMemory(addressText(address).toLongLong(), buffer.data(), length)) {
            return false;
        }
        const quint32 word =
            m_bGigE && length == WORD ? RegisterWords::swapped(*buffer.data()) : *buffer.data();
        out.append(_FORMULA_RESULT_::of(word << left >> right));
    }
    return true;
}

bool EvalContext::readRegister(const QDomElement &reg, const _FORMULA_RESULT_ &address,
                               qint64 length, RegisterBuffer &buffer)
{
    const qint64 place = addressText(address).toLongLong();
    if (readMemory(place, buffer.data(), length)) {
        return true;
    }
    fail(
        QStringLiteral("Create RegAddress  failed:%1 addr:%2 formula:%3 variables:%4")
            .arg(ElementWalk::name(reg), addressText(address), address.formula, address.variables));
    if (!RegisterWords::isMisaligned(place)) {
        return false;
    }
    return RegisterWords::readAcross(place, buffer.data(), [this](qint64 at, quint32 *word) {
        return readMemory(at, word, WORD);
    });
}
