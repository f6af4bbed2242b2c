#pragma once

/// A network namespace with nothing but a loopback interface, so that a camera of the test neither meets the network
/// around nor another test.
namespace OwnNetwork {

/// Exit code of a test program that ctest counts as skipped.
constexpr int SKIPPED = 77;

/// Starts this program anew inside such a namespace, unless it runs in one already. First thing in main(). Returns
/// inside only; where the system allows no namespace, it ends the program as skipped with a message.
void enter(char *argv[]);

} // namespace OwnNetwork
