#include "apps/chartutil/Program.h"
#include "apps/chartutil/terminal/Console.h"

int main(int argc, char** argv) {
    PrepareConsole();
    return static_cast<int>(RunProgram(Utf8Arguments(argc, argv)));
}
