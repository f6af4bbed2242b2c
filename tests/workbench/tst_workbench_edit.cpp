#include "tests/support/DataTable.h"
#include "tests/workbench/WorkbenchProcess.h"

/// Writes and commands of the command line, by the real program: what is written, refused, asked and said.
class WorkbenchEditTest : public QObject
{
    Q_OBJECT
private slots:
    void edits_data();
    void edits();

private:
    WorkbenchProcess m_workbench;
};

void WorkbenchEditTest::edits_data()
{
    const DataTable<QString, QStringList, int, QByteArray, QByteArray> row(
        "device", "jobs", "exitCode", "out", "err");
    const auto accepted = [&row](const char *name, const char *device, const QStringList &jobs,
                                 const char *out) { row(name, device, jobs, 0, out, ""); };
    const auto refused = [&row](const char *name, const char *device, const QStringList &jobs,
                                const char *err) { row(name, device, jobs, 1, "", err); };
    const char *const area = "area-camera";
    const char *const reader = "code-reader";
    const struct
    {
        const char *device;
        const char *written;
        const char *out;
    } spellings[] = {{area, "Width=640", "640\n"},
                     {area, "Width=0x280", "640\n"},
                     {area, "ExposureTime=1234.5", "1234.50\n"},
                     {area, "ReverseX=ON", "True\n"},
                     {area, "DeviceUserID=a<b=c", "a<b=c\n"},
                     {reader, "CommunicationProtocols=TcpServer", "Tcp Server\n"},
                     {reader, "CommunicationProtocols=Tcp Server", "Tcp Server\n"},
                     {reader, "CommunicationProtocols=6", "Tcp Server\n"}};
    for (const auto &[device, written, out] : spellings) {
        accepted(written, device,
                 {"--write", written, "--read", QString(written).section('=', 0, 0)}, out);
    }
    accepted("written in another order than given", area,
             {"--write", "Width=640", "--write", "OffsetX=1000", "--read", "OffsetX"}, "1000\n");
    refused("first of two writes skipped", area,
            {"--write", "OffsetX=1000", "--write", "Width=640"},
            "'OffsetX' was not written. The value must lie between 0 and");
    accepted("value that the device takes back", reader,
             {"--write", "ExposureAuto=Once", "--read", "ExposureAuto"}, "Off\n");
    row("advice taken for a refusal", area,
        {"--write", "GevSCPSPacketSize=9000", "--read", "GevSCPSPacketSize"}, 0, "9000\n",
        "recommended packet size");
    accepted("busy dialog of its own waited for", "grabber-camera",
             {"--write", "Width=640", "--read", "Width"}, "640\n");
    refused("end of the text ignored", area, {"--write", "Width=640px"}, "is not a whole number");
    refused("no switch taken for off", area, {"--write", "ReverseX=maybe"},
            "'maybe' is neither true nor false");
    refused("entry that does not exist", area, {"--write", "PixelFormat=Nope"},
            "no entry 'Nope'. Entries: Mono8, ");
    refused("below the range", area, {"--write", "Width=0"}, "must lie between 64 and");
    refused("text longer than the register", area, {"--write", "DeviceUserID=" + QString(17, 'x')},
            "17 bytes");
    refused("feature that can only be read", area, {"--write", "DeviceTemperature=3"},
            "'DeviceTemperature' cannot be changed");
    refused("feature that does not exist", area, {"--write", "Widht=640"}, "no feature 'Widht'");
    refused("value run", area, {"--run", "Width"}, "'Width' is no command");
    refused("write that polling keeps from the device told as done", reader,
            {"--write", "PollingEnable=1", "--write", "LightingSelector=2"},
            "'LightingSelector' was not written: it still holds");
    refused("box of the tree waits for ever", reader, {"--write", "LineConfig0=1"},
            "The line cannot be configured");
    refused("prompt of the host unheard", reader, {"--write", "TCPDestPort=21"},
            "another service may use it");
    refused("question answered with yes", reader, {"--run", "UserSetRecover"}, "--yes");
    accepted("answer of the caller forgotten", reader,
             {"--write", "LocBarNum=7", "--run", "UserSetRecoverFactory", "--yes", "--read",
              "LocBarNum"},
             "4\n");
    refused("command that the device refuses", reader, {"--run", "UserSetDelete", "--yes"},
            "'UserSetDelete' was not run");
    row("command that takes the device away", area, {"--run", "DeviceReset"}, 0, "",
        "The camera is restarting");
    row("device read before it is back", area,
        {"--write", "Width=640", "--run", "DeviceReset", "--read", "Width"}, 0, "2448\n", "lost");
}

void WorkbenchEditTest::edits()
{
    QFETCH(QString, device);
    QFETCH(QStringList, jobs);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, out);
    QFETCH(QByteArray, err);
    const WorkbenchProcess::Result result = m_workbench.run(QStringList{"--device", device} + jobs);
    QVERIFY(result.ended);
    QVERIFY2(result.exitCode == exitCode, result.err.constData());
    QCOMPARE(result.out, out);
    QVERIFY2(err.isEmpty() ? result.err.isEmpty() : result.err.contains(err),
             result.err.constData());
}

QTEST_GUILESS_MAIN(WorkbenchEditTest)
#include "tst_workbench_edit.moc"
