#include "tests/workbench/DeviceReference.h"
#include "tests/workbench/WorkbenchProcess.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <limits>

/// Every value that vexa-workbench --dump prints, against what Aravis reads of the same device.
class WorkbenchDumpTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void valuesAreThoseOfTheDevice();
    void ungivenValuesAreNull();

private:
    /// Features that change by themselves between two readings, found out by reading twice.
    bool moves(const QString &name) const
    {
        // The temperature drifts too slowly for two readings in a row.
        return name == "DeviceTemperature"
            || m_first.value(name).value != m_second.value(name).value;
    }

    WorkbenchProcess m_workbench;
    QJsonArray m_items;
    QMap<QString, QJsonObject> m_byName;
    QMap<QString, DeviceReference::Value> m_first;
    QMap<QString, DeviceReference::Value> m_second;
};

namespace {

/// A missing limit is the largest double for Aravis; a float holds its own largest number.
float limit(const QVariant &value)
{
    constexpr double LARGEST = std::numeric_limits<float>::max();
    return static_cast<float>(qBound(-LARGEST, value.toDouble(), LARGEST));
}

} // namespace

void WorkbenchDumpTest::initTestCase()
{
    m_first = DeviceReference::readFeatures("area-camera");
    const QString path = m_workbench.path("dump.json");
    const WorkbenchProcess::Result result =
        m_workbench.run({"--device", "area-camera", "--dump", path});
    QVERIFY2(result.ended && result.exitCode == 0, result.err.constData());
    QCOMPARE(result.out + result.err, QByteArray());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_items = QJsonDocument::fromJson(file.readAll()).array();
    for (const QJsonValue &item : qAsConst(m_items)) {
        m_byName.insert(item["name"].toString(), item.toObject());
    }
    m_second = DeviceReference::readFeatures("area-camera");
    QVERIFY(m_byName.size() >= 180);
}

void WorkbenchDumpTest::valuesAreThoseOfTheDevice()
{
    QStringList wrong; // all of them: one fault seldom comes alone
    int compared = 0;
    for (auto it = m_byName.cbegin(); it != m_byName.cend(); ++it) {
        const DeviceReference::Value expected = m_first.value(it.key());
        if (!expected.value.isValid() || moves(it.key())) {
            continue;
        }
        const auto compare = [&](const char *field, const QVariant &reference) {
            const QVariant found = it->value(QLatin1String(field)).toVariant();
            const bool same = it->value("tag") == "Float"
                ? found.toFloat() == limit(reference)
                : found.toString() == reference.toString();
            if (found.isNull() || !same) {
                wrong += QString("%1 %2: %3 instead of %4")
                             .arg(it.key(), QLatin1String(field), found.toString(),
                                  reference.toString());
            }
        };
        if (it->value("tag") == "IntReg") {
            // A bare register has a row of its own but no value class.
            QVERIFY2(it->value("value").isNull(), it.key().toUtf8());
            continue;
        }
        compare("value", expected.value);
        if (it->value("tag") == QLatin1String("Enumeration")) {
            bool offered = false;
            for (const QJsonValue &entry : it->value("entries").toArray()) {
                offered = offered || entry["value"] == it->value("value");
            }
            QVERIFY2(offered, it.key().toUtf8());
        }
        for (const auto &[field, reference] :
             {std::pair{"min", expected.min}, {"max", expected.max}, {"inc", expected.inc}}) {
            if (reference.isValid()) {
                compare(field, reference);
            }
        }
        ++compared;
    }
    QCOMPARE(wrong.join('\n'), QString());
    QVERIFY2(compared > 120, QByteArray::number(compared));
}

void WorkbenchDumpTest::ungivenValuesAreNull()
{
    int unread = 0;
    for (const QJsonValue &item : qAsConst(m_items)) {
        const QString name = item["name"].toString();
        if (m_first.contains(name) && !m_first.value(name).readable) {
            for (const char *field : {"value", "displayValue", "min", "max", "inc"}) {
                QVERIFY2(item.toObject().contains(field) && item[QLatin1String(field)].isNull(),
                         name.toUtf8());
            }
            ++unread;
        }
    }
    QVERIFY(unread > 0);
}

QTEST_GUILESS_MAIN(WorkbenchDumpTest)
#include "tst_workbench_dump.moc"
