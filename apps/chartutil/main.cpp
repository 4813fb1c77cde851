#include "apps/chartutil/Program.h"

int main(int argc, char** argv) {
    PrepareConsole();
    return static_cast<int>(RunProgram(Utf8Arguments(argc, argv)));
}
