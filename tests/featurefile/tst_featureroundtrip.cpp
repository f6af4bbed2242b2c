#include "featurefile/FeatureFileStore.h"
#include "tests/featurefile/JobFixture.h"
#include "tests/support/DataTable.h"
#include "tests/support/ForgetfulDevice.h"

#include <cmath>

namespace {

using Thread = VexaFeatureImExThread;
using Value = FeatureFileLines::Value;
using Register = FeatureFileLines::Register;
constexpr int CHANGES = 50;
const QSet<QString> POLLED = {"PollingExposureTime", "PollingGamma",       "PollingVertline",
                              "PollingParamEnable",  "PollingLightEnable", "PollingFocusPos",
                              "PollingFocusEnable",  "PollingGain",        "PollingParam"};

/// The device's answer as a file has it; false when it gives none.
bool answer(QCameraTask *task, const QString &type, const QString &name, QString *text)
{
    int error = 0;
    if (type == "Boolean") {
        bool value = false;
        const bool done = task->GetBooleanValue(name, &value, &error, false, false);
        *text = value ? "1" : "0";
        return done;
    }
    if (type == "Integer" || type == "IntReg") {
        _NODE_INT_VALUE_ value = {};
        const bool done = task->GetIntegerValue(name, &value, &error, false, false);
        *text = QString::number(value.value);
        return done;
    }
    if (type == "Float") {
        _NODE_FLOAT_VALUE_ value = {};
        const bool done = task->GetFloatValue(name, &value, &error, false, false);
        *text = QString::number(double(value.value), 'f', 6);
        return done;
    }
    if (type == "Enumeration") {
        const auto record = std::make_unique<_NODE_ENUM_VALUE_>();
        const bool done = task->GetEnumerationValue(name, record.get(), &error, false, false);
        *text = QString::number(record->value);
        return done;
    }
    return task->GetStringValue(name, text, nullptr, &error, false, false);
}

/// Sets a feature to a value other than the present one that a file can carry; false when there is none.
bool change(QCameraTask *task, const Value &line)
{
    int error = 0;
    if (task->GetAccessMode(line.name, &error) != NODE_RW) {
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
        return v.value == qint32(v.value) && other <= v.max
            && task->SetIntegerValue(line.name, other, &error);
    }
    if (line.type == "Float") {
        _NODE_FLOAT_VALUE_ v = {};
        task->GetFloatValue(line.name, &v, nullptr, false, false);
        // Other numbers have further bits behind them than those of single precision.
        return v.value * 4 == std::floor(v.value * 4)
            && task->SetFloatValue(line.name, v.min + (v.max - v.min) / 4, &error);
    }
    if (line.type == "Enumeration") {
        const auto record = std::make_unique<_NODE_ENUM_VALUE_>();
        task->GetEnumerationValue(line.name, record.get(), &error, false, false);
        const auto end = record->entries + record->count;
        const auto other = std::find_if(record->entries, end,
                                        [&](quint32 entry) { return entry != record->value; });
        return other != end && task->SetEnumerationValue(line.name, *other, &error);
    }
    return task->SetStringValue(line.name, line.value == "b" ? "a" : "b", &error);
}

/// A device, the file of its settings, and what a reader of its description alone makes of both.
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
    QString wordsAt(quint64 address, qint64 length) const
    {
        QByteArray bytes = device.control->peek(address, quint32(length));
        const bool isBig = basic->_GetDevType() == 1 && length == 4;
        QStringList words;
        bytes.append(QByteArray((4 - bytes.size() % 4) % 4, 0));
        for (int at = 0; at < bytes.size(); at += 4) {
            const char *word = bytes.constData() + at;
            words += QString::number(isBig ? qFromBigEndian<quint32>(word)
                                           : qFromLittleEndian<quint32>(word));
        }
        return words.join(',');
    }
    bool isWritable(const Register &line) const
    {
        int error = 0;
        return line.reg.isEmpty() || task->GetAccessMode(line.reg, &error) == NODE_RW;
    }
    /// A node that has a value now and another one, or none, in its register when it is not available.
    bool differs(const Value &line) const
    {
        QString text;
        int error = 0;
        if (answer(task, line.type, line.name, &text)) {
            return text != line.value;
        }
        if (line.type == "Boolean" || task->GetAccessMode(line.name, &error) != NODE_NA) {
            return false;
        }
        const auto nodes = builder.elementMap();
        const QDomElement node = nodes.value(line.name);
        const QDomElement reg = node.tagName() == "StringReg"
            ? node
            : nodes.value(node.firstChildElement("pValue").text());
        if ((reg.tagName() == "IntReg" || reg.tagName() == "StringReg")
            && reg.firstChildElement("pIndex").isNull()) {
            text = wordsAt(reg.firstChildElement("Address").text().toULongLong(nullptr, 0),
                           reg.firstChildElement("Length").text().toLongLong());
        }
        return line.type == "Float" || line.type == "StringReg"
            ? text != line.value
            : text.toInt() != line.value.toInt();
    }
    bool differs(const Register &line) const
    {
        const QString words = wordsAt(quint64(line.address), line.length);
        return isWritable(line)
            && (line.to.isEmpty() ? words != line.text : words.section(',', 0, 0) != line.to);
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
    /// What is unlike the file, out of the device's memory and its own answers.
    QStringList differencesFrom(const FeatureFileLines &file) const
    {
        QStringList names;
        for (const Value &line : file.values) {
            names += differs(line) ? QStringList(line.name) : QStringList();
        }
        for (const Register &line : file.registers) {
            names += differs(line) ? QStringList(line.name + line.variables) : QStringList();
        }
        names.sort();
        return names;
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
            QString text;
            const QDomElement node = builder.elementMap().value(line.name);
            if (changed.size() < CHANGES && !deciding.contains(line.name)
                && !deciding.contains(node.firstChildElement("pValue").text())
                && !line.name.contains("Selector") && !line.name.startsWith("AcquisitionLineRate")
                && line.name != "PollingParam" && answer(task, line.type, line.name, &text)
                && text == line.value && change(task, line)) {
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
    void takesNoMoreThanItNeeds_data();
    void takesNoMoreThanItNeeds();
};

void tst_FeatureRoundTrip::bringsADeviceBack_data()
{
    // The last column is what lost bits on its way.
    const DataTable<QString, quint32, QString> row("id", "polling", "inexact");
    row("area-camera", "area-camera", 0, "");
    row("area-camera, aligned only", "area-camera", 0, "");
    row("code-reader", "code-reader", 0, "ServiceValue");
    row("code-reader, polling", "code-reader", 1, "ServiceValue");
    row("line-camera", "line-camera", 0, "");
    row("grabber-camera", "grabber-camera", 0, "");
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
    QStringList inexact;
    for (const FeatureFileNote &note : trip.thread->report().remarks) {
        inexact +=
            note.reason == FeatureFileReason::Inexact ? QStringList(note.name) : QStringList();
    }
    inexact.removeDuplicates();
    QTEST(inexact.join(' '), "inexact");
    const QStringList turns = trip.differencesFrom(file); // only what has another value in each set
    QVERIFY2(polling || turns.isEmpty(), qPrintable(turns.join(' ')));
    QCOMPARE(trip.exported(), first);

    const QString path = trip.folder.filePath("first.vxf");
    QString detail;
    QCOMPARE(FeatureFileStore::writeFile(path, QString::fromUtf8(first), &detail),
             FeatureFileFailure::None);
    const auto memory = trip.memory();
    const QStringList changed = trip.changeSettings(file);
    QCOMPARE(changed.size(), CHANGES);
    const QStringList expected = trip.differencesFrom(file);
    for (const QString &name : changed) {
        QVERIFY2(expected.contains(name), qPrintable(name));
    }
    trip.device.control->setLogging(true);
    QVERIFY(trip.run(Thread::OPERATION_CHECK_FILE, path));
    QCOMPARE(trip.thread->resultCode(), quint32(FEATURE_FILE_OK));
    const QStringList listed = trip.differing();
    for (int at = 0; at < qMax(listed.size(), expected.size()); ++at) {
        QCOMPARE(listed.value(at), expected.value(at));
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

void tst_FeatureRoundTrip::takesNoMoreThanItNeeds_data()
{
    const DataTable<QString> row("id");
    for (const QString &id : SimulatedDevices::builtInIds()) {
        row(qPrintable(id), id);
    }
}

/// Every line by itself: what decides on it, its plain value unless a selector is before it, its registers and what
/// their addresses are made of.
void tst_FeatureRoundTrip::takesNoMoreThanItNeeds()
{
    QFETCH(QString, id);
    RoundTrip trip(SimulatedDevices::builtIn(id));
    const FeatureFileLines file = FeatureFileLines::of(trip.exported());
    SimulatorControl &control = *trip.device.control;
    const ForgetfulDevice forgetful(trip.task);
    control.setLogging(true);
    QVERIFY(!trip.exported().isEmpty());
    const int accesses = control.accessLog().size();
    control.clearAccessLog();
    const auto nodes = trip.builder.elementMap();
    QSet<QString> selected;
    for (const auto &record : trip.maps.pSelectedRecords()) {
        selected.insert(record.second);
    }
    QString text;
    const auto readCondition = [&](const QString &name) {
        const QString available = nodes.value(name).lastChildElement("pIsAvailable").text();
        if (available.contains("TDCR") || available.contains("Quality")) {
            answer(trip.task, "Integer", "Quality1DEnable_Inq", &text);
        }
        const QString implemented = nodes.value(name).lastChildElement("pIsImplemented").text();
        if (POLLED.contains(name)) {
            answer(trip.task, "Enumeration", "PollingEnable", &text);
        } else if (!implemented.isEmpty()) {
            answer(trip.task, "Integer", implemented, &text);
        }
    };
    for (const auto &header : file.header) {
        if (header.first != "DeviceModelName") { // known since the opening
            answer(trip.task, nodes.value(header.first).tagName(), header.first, &text);
        }
    }
    for (const Value &line : file.values) {
        readCondition(line.name);
        answer(trip.task, line.type, line.name, &text);
    }
    for (const FeatureFileNote &note : trip.thread->report().leftOut) {
        if (note.reason >= FeatureFileReason::Condition) {
            readCondition(note.name);
        }
        if (note.reason == FeatureFileReason::Unreadable) {
            answer(trip.task, nodes.value(note.name).tagName(), note.name, &text);
        }
    }
    QString group;
    for (const Register &line : file.registers) {
        const QStringList parts = line.variables.split(QRegularExpression("[\\[\\]:]"));
        if (line.name != group) {
            readCondition(line.name);
            if (!selected.contains(line.name)) {
                answer(trip.task, nodes.value(line.name).tagName(), line.name, &text);
            }
            for (const QString &part : parts) {
                bool isPlace = false;
                const qint64 place =
                    nodes.value(part).firstChildElement("Address").text().toLongLong(&isPlace, 0);
                quint32 word = 0;
                QVERIFY(!isPlace || trip.task->ReadMemory(place, &word, 4, nullptr));
            }
        }
        group = line.name;
        QByteArray bytes(int(line.length), 0);
        QVERIFY(trip.task->ReadMemory(line.address, bytes.data(), line.length, nullptr));
    }
    // Two for a dump that fails, of the one node whose address is not as it was meant.
    const int needed = control.accessLog().size() + (nodes.contains("ServiceValue") ? 2 : 0);
    QVERIFY2(accesses <= needed, qPrintable(QString("%1 %2").arg(accesses).arg(needed)));
}

QTEST_GUILESS_MAIN(tst_FeatureRoundTrip)
#include "tst_featureroundtrip.moc"
