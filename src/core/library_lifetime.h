// What happens when threads and processes come to the library and leave it.
#pragma once

namespace ostrel {

// A thread begins: the slot for a temporary file is emptied.
void AttachThread();

// A thread ends.
void DetachThread();

// The process lets go of the library: its activation context and its language library go. When the
// library is unloaded while the process lives on, so does all that it kept to the end; at the
// process's own end the system takes that back.
void DetachProcess(bool unloading);

// Whether nobody uses the library.
bool CanUnloadNow();

// Deletes the file of the temporary-file slot when one was handed over. No page does so today.
void DeleteTemporaryFile();

}  // namespace ostrel
