#pragma once

/// Brings what GLib and Aravis have to say into the log of the program, category "vexa.devicetask.aravis". A strange
/// description can make them say hundreds of lines, which would drown what a script reads on the standard error.
namespace GLibLog {

/// Once a process; any thread.
void install();

} // namespace GLibLog
