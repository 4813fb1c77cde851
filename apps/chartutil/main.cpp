#include "apps/chartutil/Commands.h"
#include "apps/chartutil/Console.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    PrepareConsole();
    CLI::App program("chartutil: settings, colours and geometry of the charting suite from the command line");
    program.footer("Exit codes: 0 success, 1 a check failed, 2 wrong use, 3 input or output error.\n"
                   "'chartutil COMMAND --help' explains a command and shows examples.");
    program.set_version_flag("--version", "chartutil 5.0.0.20");
    program.require_subcommand(1);
    AddSettingsCommand(program);
    AddCrcCommand(program);

    try {
        std::vector<std::string> arguments = Utf8Arguments(argc, argv);
        std::reverse(arguments.begin(), arguments.end()); // CLI11 takes them from the back
        program.parse(std::move(arguments));
        std::cout.flush();
        if (!std::cout) throw CommandError(ExitCode::IO_ERROR, "standard output cannot be written");
        return static_cast<int>(ExitCode::SUCCESS);
    } catch (const CLI::ParseError& error) {
        const bool isHelp = program.exit(error) == 0;
        return static_cast<int>(isHelp ? ExitCode::SUCCESS : ExitCode::WRONG_USE);
    } catch (const CommandExit& exit) {
        std::cout.flush();
        return static_cast<int>(exit.code);
    } catch (const CommandError& error) {
        std::cout.flush();
        std::cerr << "chartutil: " << error.what() << '\n';
        return static_cast<int>(error.Code());
    } catch (const std::bad_alloc&) {
        std::cerr << "chartutil: not enough memory for this input\n";
        return static_cast<int>(ExitCode::IO_ERROR);
    } catch (const std::exception& error) {
        std::cerr << "chartutil: " << error.what() << '\n';
        return static_cast<int>(ExitCode::IO_ERROR);
    }
}
