// SPDX-License-Identifier: MIT
// A host that ends with static subscribers in the program and in a library, made before the observer (older),
// after it (younger), or without anybody having used it (unused).
//   ObserverAtExit older|younger|unused return|exit

#include "tests/runtime/Witness.h"

#include <cstdlib>
#include <string>

Witness& WitnessOfTheLibrary();

namespace {

Witness ofTheProgram("program");

} // namespace

int main(int count, char** arguments) {
    if (count != 3) return 2;
    const std::string order = arguments[1];
    if (order == "younger") UTL::Observer::Get().Notify(L"first", 1);
    static Witness ofMain("main");
    if (order != "unused") {
        for (Witness* const witness : {&ofTheProgram, &ofMain, &WitnessOfTheLibrary()})
            UTL::Observer::Get().Subscribe(witness, L"exit");
        UTL::Observer::Get().Notify(L"exit", 0);
    }
    if (arguments[2] == std::string("exit")) std::exit(0);
    return 0;
}
