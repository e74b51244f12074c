#pragma once

namespace vesk {

// Makes the first SIGINT, SIGTERM or SIGHUP a wish that long work asks for; the second one of a
// kind ends the program at once.
void WatchForInterrupts();

bool Interrupted();

// Ends the program by a Stop if the user asked for it.
void StopIfInterrupted();

}  // namespace vesk
