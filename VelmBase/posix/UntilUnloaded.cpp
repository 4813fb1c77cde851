#include "VelmBase/UntilUnloaded.h"

bool IsProcessEnding() { return true; }
