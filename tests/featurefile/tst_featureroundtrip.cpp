#include "featurefile/FeatureFileStore.h"
#include "tests/featurefile/JobFixture.h"

#include <QtTest>

#include <cmath>

namespace {

using Thread = VexaFeatureImExThread;
using Value = FeatureFileLines::Value;
using Register = FeatureFileLines::Register;
constexpr int READ_WRITE = 4;
constexpr int CHANGES = 50;

/// Sets a feature that has the file's value to another one that a file can carry; false when there is none.
bool change(QCameraTask *task, const Value &line)
{
    int error = 0;
    if (task->GetAccessMode(line.name, &error) != READ_WRITE) {
        return false;
    }
    if (line.type == "Boolean") {
        return task->SetBooleanValue(line.name, line.value != "1", &error);
    }
    if (line.type == "Integer" || line.type == "IntReg") {
        _NODE_INT_VALUE_ v = {};
        task->GetIntegerValue(line.name, &v, nullptr, false, false);
        const qint64 step = qMax<qint64>(1, v.inc);
        // A range may be all 64 bits.
        const qint64 other = v.value >= v.min + step ? v.value - step : v.value + step;
        return v.value == qint32(v.value) && v.value == line.value.toLongLong() && other <= v.max
            && task->SetIntegerValue(line.name, other, &error);
    }
    if (line.type == "Float") {
        _NODE_FLOAT_VALUE_ v = {};
        task->GetFloatValue(line.name, &v, nullptr, false, false);
        // Other numbers have further bits behind them than those of single precision.
        return v.value * 4 == std::floor(v.value * 4) && v.value == line.value.toFloat()
            && task->SetFloatValue(line.name, v.min + (v.max - v.min) / 4, &error);
    }
    if (line.type == "Enumeration") {
        const auto record = std::make_unique<_NODE_ENUM_VALUE_>();
        task->GetEnumerationValue(line.name, record.get(), &error, false, false);
        const auto end = record->entries + record->count;
        const auto other = std::find_if(record->entries, end,
                                        [&](quint32 entry) { return entry != record->value; });
        return record->value == line.value.toUInt() && other != end
            && task->SetEnumerationValue(line.name, *other, &error);
    }
    return line.type == "StringReg"
        && task->SetStringValue(line.name, line.value == "b" ? "a" : "b", &error);
}

/// A device whose settings can be changed all over its file.
struct RoundTrip : JobFixture
{
    using JobFixture::JobFixture;

    /// All memory that the description leads to.
    QMap<quint64, QByteArray> memory() const
    {
        QMap<quint64, QByteArray> words;
        for (const QDomElement &element : builder.elementMap()) {
            bool isPlace = false;
            quint64 at = element.firstChildElement("Address").text().toULongLong(&isPlace, 0);
            while (isPlace && !words.contains(at)) {
                const QByteArray word = device.control->peek(at, 4);
                isPlace = !word.isEmpty();
                words.insert(at, word);
                at += 4;
            }
        }
        return words;
    }
    bool isWritable(const Register &line) const
    {
        int error = 0;
        return line.reg.isEmpty() || task->GetAccessMode(line.reg, &error) == READ_WRITE;
    }
    /// Nodes that decide what others can do, and everything on the way to them.
    QSet<QString> conditions() const
    {
        QSet<QString> found;
        QStringList open;
        const auto nodes = builder.elementMap();
        const auto take = [&](const QDomElement &element, const QStringList &tags) {
            for (QDomElement c = element.firstChildElement(); !c.isNull();
                 c = c.nextSiblingElement()) {
                if (tags.contains(c.tagName()) && !found.contains(c.text())) {
                    found.insert(c.text());
                    open += c.text();
                }
            }
        };
        for (const QDomElement &element : nodes) {
            take(element, {"pIsAvailable", "pIsLocked", "pIsImplemented", "pMin", "pMax", "pInc"});
        }
        while (!open.isEmpty()) {
            take(nodes.value(open.takeFirst()), {"pValue", "pVariable"});
        }
        return found;
    }
    /// Registers that no other line of the file follows or shares.
    QVector<Register> independentRegisters(const FeatureFileLines &file) const
    {
        QVector<Register> lines;
        QSet<qint64> places;
        for (const Register &line : file.registers) {
            if (isWritable(line) && line.address % 4 == 0 && !line.name.contains("Selector")
                && !line.name.startsWith("GevSC") && !line.name.startsWith("File")
                && builder.elementMap().value(line.reg).tagName() != "MaskedIntReg"
                && !places.contains(line.address)) {
                places.insert(line.address);
                lines += line;
            }
        }
        return lines;
    }
    /// Changes settings all over the file and gives the names of their differences.
    QStringList changeSettings(const FeatureFileLines &file)
    {
        QVector<Register> lines = independentRegisters(file);
        QStringList changed;
        const auto changeRegister = [&](int at) {
            const Register line = lines.takeAt(at);
            QByteArray byte = device.control->peek(quint64(line.address), 1);
            byte[0] = char(byte.at(0) ^ 1);
            device.control->poke(quint64(line.address), byte);
            changed += line.name + line.variables;
        };
        const int step = qMax(1, lines.size() / (CHANGES / 2));
        for (int at = 0; at < lines.size() && changed.size() < CHANGES / 2; at += step - 1) {
            changeRegister(at);
        }
        const QSet<QString> deciding = conditions();
        for (const Value &line : file.values) {
            const QDomElement node = builder.elementMap().value(line.name);
            if (changed.size() < CHANGES && !deciding.contains(line.name)
                && !deciding.contains(node.firstChildElement("pValue").text())
                && !line.name.contains("Selector") && !line.name.startsWith("AcquisitionLineRate")
                && line.name != "PollingParam" && change(task, line)) {
                changed += line.name;
            }
        }
        while (changed.size() < CHANGES && !lines.isEmpty()) {
            changeRegister(0);
        }
        task->InvalidateNode("Root"); // the memory was changed behind its back
        return changed;
    }
};

} // namespace

class tst_FeatureRoundTrip : public QObject
{
    Q_OBJECT
private slots:
    void bringsADeviceBack_data();
    void bringsADeviceBack();
};

void tst_FeatureRoundTrip::bringsADeviceBack_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<quint32>("polling");
    QTest::newRow("area-camera") << "area-camera" << 0U;
    QTest::newRow("area-camera, aligned only") << "area-camera" << 0U;
    QTest::newRow("code-reader") << "code-reader" << 0U;
    QTest::newRow("code-reader, polling") << "code-reader" << 1U;
    QTest::newRow("line-camera") << "line-camera" << 0U;
    QTest::newRow("grabber-camera") << "grabber-camera" << 0U;
}

void tst_FeatureRoundTrip::bringsADeviceBack()
{
    QFETCH(QString, id);
    QFETCH(quint32, polling);
    RoundTrip trip(SimulatedDevices::builtIn(id));
    QVERIFY(trip.task);
    trip.device.control->setAlignedOnly(QByteArray(QTest::currentDataTag()).contains("aligned"));
    // A device works its measured rates out at the first write.
    _NODE_INT_VALUE_ height = {};
    int error = 0;
    QVERIFY(trip.task->GetIntegerValue("Height", &height, &error, false, false));
    QVERIFY(trip.task->SetIntegerValue("Height", height.value, &error));
    if (polling) {
        QVERIFY(trip.task->SetEnumerationValue("PollingEnable", polling, &error));
        trip.exported(); // leaves the last set selected
    }
    const QByteArray first = trip.exported();
    const FeatureFileLines file = FeatureFileLines::of(first);
    QCOMPARE(file.error, QString());
    QStringList sorted = file.order.toList();
    std::sort(sorted.begin(), sorted.end());
    QCOMPARE(QStringList(file.order.toList()), sorted);
    QCOMPARE(trip.exported(), first);

    const QString path = trip.folder.filePath("first.vxf");
    QString detail;
    QCOMPARE(FeatureFileStore::writeFile(path, QString::fromUtf8(first), &detail),
             FeatureFileFailure::None);
    QVERIFY(trip.run(Thread::OPERATION_CHECK_FILE, path));
    // Only what has another value in each set.
    QVERIFY2(polling || trip.differing().isEmpty(), qPrintable(trip.differing().join(' ')));
    const auto memory = trip.memory();
    const QStringList changed = trip.changeSettings(file);
    QCOMPARE(changed.size(), CHANGES);
    trip.device.control->setLogging(true);
    QVERIFY(trip.run(Thread::OPERATION_CHECK_FILE, path));
    QCOMPARE(trip.thread->resultCode(), quint32(FEATURE_FILE_OK));
    const QStringList listed = trip.differing();
    for (const QString &name : changed) {
        QVERIFY2(listed.contains(name), qPrintable(name));
    }
    for (const SimulatorAccess &access : trip.device.control->accessLog()) {
        QCOMPARE(access.kind, SimulatorAccess::Read);
    }
    trip.device.control->setLogging(false);

    QVERIFY(trip.run(Thread::OPERATION_APPLY_FILE, path));
    QStringList rest;
    for (const FeatureFileNote &note : trip.thread->report().notImported) {
        if (trip.task->GetAccessMode(note.name, &error) != 3) { // what the device works out
            rest += note.name + ' ' + note.detail;
        }
    }
    QCOMPARE(rest.join('\n'), QString());
    const auto now = trip.memory();
    for (auto it = memory.cbegin(); it != memory.cend(); ++it) {
        QVERIFY2(now.value(it.key()) == it.value(),
                 qPrintable(QString::number(it.key(), 16) + ' ' + now.value(it.key()).toHex() + ' '
                            + it.value().toHex()));
    }
    QCOMPARE(trip.exported(), first);
}

QTEST_GUILESS_MAIN(tst_FeatureRoundTrip)
#include "tst_featureroundtrip.moc"
