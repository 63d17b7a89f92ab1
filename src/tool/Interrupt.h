#pragma once

namespace bouncecheck {

/// Thrown to unwind when a signal wants the program to end, so that everything
/// half done is put away.
class Interrupted {};

/// From here on SIGINT, SIGTERM, SIGHUP and SIGPIPE are noted rather than obeyed.
/// Only for work that leaves files behind: without, a signal does its worst at
/// once.
void noteSignals();

/// Throws Interrupted when such a signal has come.
void throwIfInterrupted();

/// Ends the program by the signal that was noted, so that its caller sees the
/// status that it expects of that signal.
[[noreturn]] void endByNotedSignal();

}  // namespace bouncecheck
