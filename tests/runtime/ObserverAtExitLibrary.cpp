// SPDX-License-Identifier: MIT
// A library of a host with a static subscriber of its own.

#include "tests/runtime/Witness.h"

namespace {

Witness ofTheLibrary("library");

} // namespace

Witness& WitnessOfTheLibrary() { return ofTheLibrary; }
