#include "host/simulator/SimulatedDevices.h"

#include <QByteArray>
#include <QTemporaryFile>

#include <arv.h>
#include <csignal>
#include <cstdio>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

const char *const INTERFACE = "127.0.0.1";
/// Where a fake camera maps the file that it serves, behind the memory of its own registers.
constexpr quint64 FILE_ADDRESS = 0x10000;
constexpr quint64 URL_REGISTER = 0x200; ///< GigE Vision first URL
/// End of the registers of the simulated devices.
constexpr quint64 REGISTERS_END = 0x60000;

/// What the simulated device's registers hold at first, and its description behind them.
QByteArray imageOf(const SimulatorControl &device)
{
    QByteArray image;
    for (quint64 address = FILE_ADDRESS; address < REGISTERS_END; address += 4) {
        const QByteArray word = device.peek(address, 4);
        image += word.size() == 4 ? word : QByteArray(4, '\0');
    }
    return image + device.description();
}

ArvGvFakeCamera *serve(const char *serial, const QString &deviceId, QByteArray announcedSize)
{
    const auto device = SimulatedDevices::builtIn(deviceId).control;
    QTemporaryFile file;
    if (!device || !file.open() || file.write(imageOf(*device)) < 0 || !file.flush()) {
        return nullptr;
    }
    ArvGvFakeCamera *camera =
        arv_gv_fake_camera_new_full(INTERFACE, serial, file.fileName().toUtf8().constData());
    if (announcedSize.isEmpty()) {
        announcedSize = QByteArray::number(device->description().size(), 16);
    }
    const QByteArray url =
        "Local:camera.xml;" + QByteArray::number(REGISTERS_END, 16) + ';' + announcedSize + '\0';
    arv_fake_camera_write_memory(arv_gv_fake_camera_get_fake_camera(camera), URL_REGISTER,
                                 quint32(url.size()), url.constData());
    return camera;
}

} // namespace

/// fake_gige_camera SERIAL [ID [SIZE]]: a GigE Vision camera on the loopback interface until it is killed, with Aravis'
/// own description or with that of a simulated device, which it announces with another size (in hexadecimal digits) if
/// told to. Prints a line when it answers.
int main(int argc, char *argv[])
{
    ArvGvFakeCamera *camera = nullptr;
    if (argc == 2) {
        camera = arv_gv_fake_camera_new(INTERFACE, argv[1]);
    } else if (argc == 3 || argc == 4) {
        camera = serve(argv[1], QString::fromLocal8Bit(argv[2]), argc == 4 ? argv[3] : "");
    }
    if (!camera || !arv_gv_fake_camera_is_running(camera)) {
        std::fputs("fake_gige_camera: the camera does not run\n", stderr);
        return 1;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL); // not left behind by a test that crashes
    std::puts("ready");
    std::fflush(stdout);
    for (;;) {
        pause();
    }
}
