#include "featurefile/FeatureFileFormat.h"
#include "featurefile/PlainValue.h"
#include "tests/featurefile/JobFixture.h"

#include <QElapsedTimer>
#include <QtTest>

#include <cmath>

namespace {

using Thread = VexaFeatureImExThread;

/// Every constant place of the register space that the description names and that can be written.
QMap<quint64, QByteArray> memoryOf(const JobFixture &fixture)
{
    QMap<quint64, QByteArray> memory;
    for (const QDomElement &element : fixture.builder.elementMap()) {
        bool isPlace = false;
        const QString address = element.firstChildElement("Address").text();
        const quint64 place = address.toULongLong(&isPlace, 0);
        const quint32 length = element.firstChildElement("Length").text().toUInt(nullptr, 0);
        if (isPlace && length > 0 && element.firstChildElement("AccessMode").text() != "RO") {
            memory.insert(place, fixture.device.control->peek(place, length));
        }
    }
    return memory;
}

/// Another value of a feature, as the file would have it; empty when there is none.
QString otherValue(QCameraTask *task, const FeatureFileLines::Value &line)
{
    if (line.type == "Boolean") {
        return line.value == "1" ? "0" : "1";
    }
    if (line.type == "Integer" || line.type == "IntReg") {
        _NODE_INT_VALUE_ v = {};
        task->GetIntegerValue(line.name, &v, nullptr, false, false);
        const qint64 step = qMax<qint64>(1, v.inc);
        // Compared on the side of the value where nothing overflows: a range may be all 64 bits.
        return v.value >= v.min + step ? QString::number(v.value - step)
            : v.value <= v.max - step  ? QString::number(v.value + step)
                                       : QString();
    }
    if (line.type == "Float") {
        _NODE_FLOAT_VALUE_ v = {};
        task->GetFloatValue(line.name, &v, nullptr, false, false);
        if (v.value * 4 != std::floor(v.value * 4)) {
            return QString(); // the 64 bits behind it are not those of a single-precision number
        }
        const float middle = v.min + (v.max - v.min) / 4;
        return QString::number(double(middle), 'f', 6);
    }
    if (line.type == "Enumeration") {
        const auto record = std::make_unique<_NODE_ENUM_VALUE_>();
        task->GetEnumerationValue(line.name, record.get(), nullptr, false, false);
        for (quint32 index = 0; index < record->count; ++index) {
            if (record->entries[index] != record->value) {
                return QString::number(record->entries[index]);
            }
        }
    }
    return QString();
}

/// Words of the device's memory as a file has them.
QString wordsAt(const JobFixture &fixture, quint64 address, quint32 length)
{
    QByteArray bytes = fixture.device.control->peek(address, length);
    const bool isBig = fixture.basic->_GetDevType() == 1 && length == 4;
    QStringList words;
    bytes.append(QByteArray((4 - length % 4) % 4, 0));
    for (int at = 0; at < bytes.size(); at += 4) {
        const char *word = bytes.constData() + at;
        words += QString::number(isBig ? qFromBigEndian<quint32>(word)
                                       : qFromLittleEndian<quint32>(word));
    }
    return words.join(',');
}

/// What differs from the file, out of the device's memory and its own answers.
QStringList differencesOf(const JobFixture &fixture, const FeatureFileLines &file)
{
    QStringList names;
    for (const auto &line : file.values) {
        QString text;
        int error = 0;
        if (PlainValue::read(fixture.task, line.type, line.name, &text, &error)
            != PlainValue::Outcome::Done) {
            const auto &nodes = fixture.builder.elementMap();
            const QString reg = nodes[line.name].firstChildElement("pValue").text();
            const QString place = nodes[reg].firstChildElement("Address").text();
            text = line.type == "StringReg" ? QString() : line.value;
            if (line.type != "Boolean" && !place.isEmpty() && nodes[reg].tagName() == "IntReg") {
                text = wordsAt(fixture, place.toULongLong(nullptr, 0), 4);
            }
        }
        if (text != line.value) {
            names += line.name;
        }
    }
    for (const auto &line : file.registers) {
        const QString words = wordsAt(fixture, quint64(line.address), quint32(line.length));
        if (words != (line.to.isEmpty() ? line.text : line.to)) {
            names += line.name + line.variables;
        }
    }
    names.sort();
    return names;
}

} // namespace

class tst_FeatureRoundTrip : public QObject
{
    Q_OBJECT
private slots:
    void bringsADeviceBack_data();
    void bringsADeviceBack();
    void costsWhatItsAccessesCost();
};

void tst_FeatureRoundTrip::bringsADeviceBack_data()
{
    QTest::addColumn<QString>("id");
    for (const QString &id : SimulatedDevices::builtInIds()) {
        QTest::newRow(qPrintable(id)) << id;
    }
}

void tst_FeatureRoundTrip::bringsADeviceBack()
{
    QFETCH(QString, id);
    JobFixture fixture(SimulatedDevices::builtIn(id));
    QVERIFY(fixture.task);
    // A device works its measured rates out at the first write.
    _NODE_INT_VALUE_ height = {};
    int error = 0;
    QVERIFY(fixture.task->GetIntegerValue("Height", &height, &error, false, false));
    QVERIFY(fixture.task->SetIntegerValue("Height", height.value, &error));
    const QByteArray first = fixture.exported();
    const FeatureFileLines file = FeatureFileLines::of(first);
    QCOMPARE(file.error, QString());
    QVERIFY(file.values.size() > 50);
    const QStringList sorted = [&file] {
        QStringList names = file.order.toList();
        std::sort(names.begin(), names.end());
        return names;
    }();
    QCOMPARE(QStringList(file.order.toList()), sorted);
    QCOMPARE(fixture.exported(), first);

    const QString path = fixture.folder.filePath("first.vxf");
    QFile kept(path);
    QVERIFY(kept.open(QIODevice::WriteOnly) && kept.write(first) == first.size());
    kept.close();
    QVERIFY(fixture.run(Thread::OPERATION_CHECK_FILE, path));
    QCOMPARE(fixture.thread->resultCode(), quint32(FEATURE_FILE_OK));
    QCOMPARE(fixture.differing(), QStringList());

    const auto memory = memoryOf(fixture);
    int changed = 0;
    for (const auto &line : file.values) {
        const QString other = otherValue(fixture.task, line);
        if (changed < 50 && !other.isEmpty() && !line.name.contains("Selector")
            && !line.name.startsWith("AcquisitionLineRate")
            && fixture.task->GetAccessMode(line.name, &error) == 4
            && PlainValue::write(fixture.task, line.type, line.name, other, &error)
                == PlainValue::Outcome::Done) {
            ++changed;
        }
    }
    const QStringList expected = differencesOf(fixture, file);
    QVERIFY2(changed >= 25 && expected.size() >= changed / 2, qPrintable(QString::number(changed)));

    fixture.device.control->setLogging(true);
    QVERIFY(fixture.run(Thread::OPERATION_CHECK_FILE, path));
    QCOMPARE(fixture.differing(), expected);
    for (const SimulatorAccess &access : fixture.device.control->accessLog()) {
        QCOMPARE(access.kind, SimulatorAccess::Read);
    }
    QVERIFY(fixture.run(Thread::OPERATION_APPLY_FILE, path));
    const FeatureFileReport report = fixture.thread->report();
    QVERIFY(!report.changed.isEmpty());
    QStringList rest;
    for (const FeatureFileNote &note : report.notImported) {
        if (fixture.task->GetAccessMode(note.name, &error) != 3) { // what the device works out
            rest += note.name + ' ' + note.detail;
        }
    }
    QCOMPARE(rest.join('\n'), QString());
    const auto now = memoryOf(fixture);
    for (auto it = memory.cbegin(); it != memory.cend(); ++it) {
        QVERIFY2(now.value(it.key()) == it.value(),
                 qPrintable(QString::number(it.key(), 16) + ' ' + now.value(it.key()).toHex() + ' '
                            + it.value().toHex()));
    }
    QCOMPARE(fixture.exported(), first);
}

void tst_FeatureRoundTrip::costsWhatItsAccessesCost()
{
    constexpr int LATENCY_US = 300;
    JobFixture fixture(SimulatedDevices::builtIn("area-camera"));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(fixture.run(Thread::OPERATION_EXPORT, fixture.folder.filePath("a.vxf")));
    const double without = timer.nsecsElapsed() / 1000.0;
    fixture.device.control->setLatency(LATENCY_US);
    fixture.device.control->setLogging(true);
    timer.start();
    QVERIFY(fixture.run(Thread::OPERATION_EXPORT, fixture.folder.filePath("a.vxf")));
    const double spent = timer.nsecsElapsed() / 1000.0;
    const int accesses = fixture.device.control->accessLog().size();
    qInfo("export: %d accesses, %.1f ms, %.1f ms without latency, ratio %.3f", accesses,
          spent / 1000, without / 1000, spent / accesses / LATENCY_US);
    const FeatureFileLines file = FeatureFileLines::of(fixture.exported());
    const auto report = fixture.thread->report();
    QVERIFY2(accesses < 2 * (file.values.size() + file.registers.size() + report.leftOut.size()),
             qPrintable(QString::number(file.values.size())));
}

QTEST_GUILESS_MAIN(tst_FeatureRoundTrip)
#include "tst_featureroundtrip.moc"
