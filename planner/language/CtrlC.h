#pragma once

namespace biwplan {

// Ctrl-C, for a program that runs commands: the command that runs notices the wish to end. Whoever
// starts the program with Ctrl-C ignored keeps it so.
//
// Where no shell goes on afterwards, the program ends by itself with status 130 when nothing has
// noticed the wish in time; while a file is being replaced that waits. A second Ctrl-C ends it at
// once.
void WatchCtrlC();
// From now on a shell waits for the next command: nothing ends the program by itself.
void LetShellGoOn();

constexpr int kInterruptedStatus = 130;

}  // namespace biwplan
