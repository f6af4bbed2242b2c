#include "tests/stress/RegisterNoise.h"

#include <QDomDocument>
#include <QRandomGenerator>
#include <QVector>

#include <chrono>

namespace {

constexpr quint32 LONGEST_TEXT = 64;

struct Register
{
    QString kind; ///< tag of the description's element
    quint64 address;
    quint32 length;
};

QVector<Register> registersOf(const QByteArray &description)
{
    QVector<Register> registers;
    QDomDocument document;
    document.setContent(description);
    const QDomElement root = document.documentElement();
    for (const char *tag : {"IntReg", "MaskedIntReg", "FloatReg", "StringReg"}) {
        const QDomNodeList elements = root.elementsByTagName(QString::fromLatin1(tag));
        for (int i = 0; i < elements.size(); ++i) {
            const auto number = [element = elements.at(i)](const QString &child) {
                return element.firstChildElement(child).text().toULongLong(nullptr, 0);
            };
            const quint64 address = number(QStringLiteral("Address"));
            const auto length = static_cast<quint32>(number(QStringLiteral("Length")));
            if (address != 0 && length != 0 && length <= LONGEST_TEXT) {
                registers.append({elements.at(i).nodeName(), address, length});
            }
        }
    }
    return registers;
}

QByteArray changed(QByteArray bytes, const QString &kind, QRandomGenerator &random)
{
    if (kind == QLatin1String("StringReg")) {
        const int used = random.bounded(bytes.size());
        bytes.fill('\0');
        bytes.replace(0, used, QByteArray(used, static_cast<char>('A' + random.bounded(26))));
        return bytes;
    }
    // A low bit of the first or last byte, so that selectors and flags land on values that mean something.
    const bool first = kind == QLatin1String("FloatReg") || random.bounded(2) == 0;
    const int byte = first ? 0 : bytes.size() - 1;
    bytes[byte] = static_cast<char>(bytes.at(byte) ^ (1 << random.bounded(4)));
    return bytes;
}

} // namespace

RegisterNoise::RegisterNoise(std::shared_ptr<SimulatorControl> control, quint32 seed)
    : m_thread([this, control = std::move(control), seed] {
        const QVector<Register> registers = registersOf(control->description());
        QRandomGenerator random(seed);
        while (!m_bStop && !registers.isEmpty()) {
            const Register &target = registers.at(random.bounded(registers.size()));
            control->poke(
                target.address,
                changed(control->peek(target.address, target.length), target.kind, random));
            control->setLatency(random.bounded(30));
            ++m_nChanges;
            std::this_thread::sleep_for(std::chrono::microseconds(random.bounded(2000)));
        }
        control->setLatency(0);
    })
{
}

int RegisterNoise::stop()
{
    m_bStop = true;
    if (m_thread.joinable()) {
        m_thread.join();
    }
    return m_nChanges;
}
