// Removes an unfinished file when the user or the system ends the program.
#pragma once

#include <string>

namespace brevix {

/// From now on a signal to end removes the file at path before it ends the program; an empty path: nothing.
void removeOnSignal(const std::string& path);

}  // namespace brevix
