#include <arv.h>
#include <csignal>
#include <cstdio>
#include <sys/prctl.h>
#include <unistd.h>

/// gige_controller ADDRESS: another host, which holds control of the camera on the loopback interface until it is
/// killed. Prints a line when it has it.
int main(int argc, char *argv[])
{
    GInetAddress *local = g_inet_address_new_from_string("127.0.0.1");
    GInetAddress *camera = argc == 2 ? g_inet_address_new_from_string(argv[1]) : nullptr;
    ArvDevice *device = camera ? arv_gv_device_new(local, camera, nullptr) : nullptr;
    if (!device || !arv_gv_device_is_controller(ARV_GV_DEVICE(device))) {
        std::fputs("gige_controller: no control\n", stderr);
        return 1;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL); // not left behind by a test that crashes
    std::puts("ready");
    std::fflush(stdout);
    for (;;) {
        pause();
    }
}
