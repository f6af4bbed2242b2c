#include "featurefile/FeatureFileReader.h"
#include "featurefile/FeatureFileWriter.h"
#include "tests/featurefile/FeatureFileLines.h"
#include "tests/support/DataTable.h"

#include <QTemporaryDir>

namespace {

QString file(const QString &features)
{
    return "<FeaturesFile version=\"1\">" + features + "</FeaturesFile>";
}

/// Elements inside each other, the root and its `Features` counted.
QString nested(int depth)
{
    return file("<Features>" + QString("<a>").repeated(depth - 2)
                + QString("</a>").repeated(depth - 2) + "</Features>");
}

} // namespace

class tst_FeatureFileFormat : public QObject
{
    Q_OBJECT
private slots:
    void writesTheSmallFileByteForByte();
    void bringsValuesBack_data();
    void bringsValuesBack();
    void refuses_data();
    void refuses();
    void readsFiles();
};

void tst_FeatureFileFormat::writesTheSmallFileByteForByte()
{
    FeatureFileWriter writer("3.4.0");
    writer.addHeader("DeviceFirmwareVersion", "V1.2.3");
    writer.addHeader("DeviceModelName", "XX-1000");
    writer.addHeader("BoardDeviceType", "2");
    writer.beginFeatures();
    writer.addFeature("ExposureAuto", "Enumeration", "0");
    writer.addComplexFeature("LUTValue",
                             FeatureFileWriter::complexBegin("LUTValue", 4, "LUTValueReg")
                                 + FeatureFileWriter::regValue("98304", "[LUTIndex:0]", "17")
                                 + FeatureFileWriter::regValue("8", "", "2.5", 25, "TO/10<\"&\">")
                                 + FeatureFileWriter::complexEnd());
    writer.finish();
    QCOMPARE(writer.text(),
             QString("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
                     "<FeaturesFile version=\"3.4.0\">\r\n"
                     "<DeviceFirmwareVersion>V1.2.3</DeviceFirmwareVersion>\r\n"
                     "<DeviceModelName>XX-1000</DeviceModelName>\r\n"
                     "<BoardDeviceType>2</BoardDeviceType>\r\n"
                     "<Features>\r\n"
                     "<Feature>\r\n<Name>ExposureAuto</Name>\r\n<Type>Enumeration</Type>\r\n"
                     "<Value>0</Value>\r\n<Streamable>Yes</Streamable>\r\n</Feature>\r\n"
                     "<ComplexFeature name=\"LUTValue\" len=\"4\" reg=\"LUTValueReg\">\r\n"
                     "<RegValue address=\"98304\" variables=\"[LUTIndex:0]\">17</RegValue>\r\n"
                     "<RegValue address=\"8\" variables=\"\" to=\"25\" "
                     "from=\"TO/10&lt;&quot;&amp;&quot;&gt;\">2.5</RegValue>\r\n"
                     "</ComplexFeature>\r\n"
                     "</Features>\r\n</FeaturesFile>"));
    const FeatureFileLines lines = FeatureFileLines::of(writer.text().toUtf8());
    QCOMPARE(lines.error, QString());
    QCOMPARE(lines.registers.size(), 2);
    FeatureFileDocument document;
    QVERIFY(FeatureFileReader::parse(writer.text(), &document));
    QCOMPARE(document.version, QString("3.4.0"));
    QCOMPARE(document.header.value("BoardDeviceType"), QString("2"));
    QCOMPARE(document.entries.size(), 2);
    const FeatureFileEntry dump = document.entries.at(1);
    QVERIFY(dump.isComplex && dump.reg == "LUTValueReg" && dump.length == "4");
    QCOMPARE(dump.registers.at(1).from, QString("TO/10<\"&\">"));
}

void tst_FeatureFileFormat::bringsValuesBack_data()
{
    // Culprit: 0 none, 1 comes back changed, 2 unreadable.
    const DataTable<QString, int> row("value", "culprit");
    row("template marks in a value", "%1 %2 %3 %%", 0);
    row("brackets and quotes", "<a b=\"c\">'", 0);
    row("Chinese", QString::fromUtf8("\xE7\x9B\xB8\xE6\x9C\xBA"), 0);
    row("empty", "", 0);
    row("nothing but blanks", "  ", 1);
    row("bare ampersand", "a & b", 2);
    row("entity", "a &lt; b", 1);
}

void tst_FeatureFileFormat::bringsValuesBack()
{
    QFETCH(QString, value);
    QFETCH(int, culprit);
    FeatureFileWriter writer("1");
    writer.addHeader("DeviceModelName", "M");
    writer.beginFeatures();
    writer.addFeature("Before", "Integer", "1");
    writer.addFeature("Text", "StringReg", value);
    writer.addFeature("Behind", "Float", "0.100000");
    writer.finish();
    const auto culprits = writer.culprits();
    QCOMPARE(culprits.size(), culprit ? 1 : 0);
    if (culprit) {
        QCOMPARE(culprits.first().name, QString("Text"));
        QCOMPARE(culprits.first().unreadable, culprit == 2);
    }
    FeatureFileDocument document;
    QCOMPARE(FeatureFileReader::parse(writer.text(), &document), culprit != 2);
    if (!culprit) {
        QCOMPARE(document.entries.at(1).value, value);
    }
}

void tst_FeatureFileFormat::refuses_data()
{
    const DataTable<QString, QString> row("text", "reason"); // empty: accepted
    row("empty", "", "empty");
    row("truncated", "<FeaturesFile version=\"1\"><Features>", "line 1");
    row("document type", "<!DOCTYPE a [<!ENTITY b \"c\">]>" + file(""), "document");
    row("32 levels", nested(32), "");
    row("33 levels", nested(33), "deeper than 32");
    row("a hundred thousand levels", nested(100000), "deeper than 32");
    row("more than 64 MiB", file(QString(64 * 1024 * 1024, 'x')), "larger than");
}

void tst_FeatureFileFormat::refuses()
{
    QFETCH(QString, text);
    QFETCH(QString, reason);
    FeatureFileDocument document;
    QString given;
    QCOMPARE(FeatureFileReader::parse(text, &document, &given), reason.isEmpty());
    QVERIFY2(given.contains(reason), qPrintable(given));
}

void tst_FeatureFileFormat::readsFiles()
{
    const QTemporaryDir folder;
    QFile written(folder.filePath("a.vxf"));
    QVERIFY(written.open(QIODevice::WriteOnly));
    written.write("\xEF\xBB\xBF<a>\xE7\x9B\xB8</a>");
    written.close();
    QCOMPARE(FeatureFileReader::textOf(written.fileName()),
             QString::fromUtf8("<a>\xE7\x9B\xB8</a>"));
    QVERIFY(written.resize(64 * 1024 * 1024 + 1));
    QCOMPARE(FeatureFileReader::textOf(written.fileName()), QString());
    QCOMPARE(FeatureFileReader::textOf(folder.path()), QString());
    QCOMPARE(FeatureFileReader::textOf(folder.filePath("none")), QString());
}

QTEST_GUILESS_MAIN(tst_FeatureFileFormat)
#include "tst_featurefileformat.moc"
