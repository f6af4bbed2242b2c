#include "tests/realdevices/OwnNetwork.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <vector>

namespace {

const char *const INSIDE = "VEXA_TEST_OWN_NETWORK";

} // namespace

void OwnNetwork::enter(char *argv[])
{
    if (std::getenv(INSIDE)) {
        return;
    }
    if (std::system("unshare -rn ip link set lo up") != 0) {
        std::puts("SKIP   : no network namespace may be made here (unshare -rn, ip)");
        std::exit(SKIPPED);
    }
    setenv(INSIDE, "1", 1);
    // The shell takes the program and its arguments as $0 and $@.
    static char script[] = "ip link set lo up && exec \"$0\" \"$@\"";
    static char unshare[] = "unshare", namespaces[] = "-rn", shell[] = "sh", command[] = "-c";
    std::vector<char *> arguments{unshare, namespaces, shell, command, script};
    for (; *argv; ++argv) {
        arguments.push_back(*argv);
    }
    arguments.push_back(nullptr);
    execvp(unshare, arguments.data());
    std::perror("unshare");
    std::exit(1);
}
