#pragma once

#include "apps/chartutil/terminal/UserText.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <string>

/// A command in the making: what the command line offers is added to `app` and read into `options`.
template <typename Options> struct NewCommand {
    CLI::App& app;
    Options& options;
};

/// Adds a command with options of its own, which `run` gets when the user asks for the command.
template <typename Options>
NewCommand<Options> AddCommand(CLI::App& parent, const char* name, const char* what,
                               void (*run)(const Options&), const std::string& footer) {
    CLI::App& app = *parent.add_subcommand(name, what);
    const auto options = std::make_shared<Options>();
    app.footer(footer);
    app.callback([options, run] { run(*options); });
    return {app, *options};
}

/// Adds an option that may be left out. An empty text, as an unset variable of a script gives it, was given.
inline void AddOptional(CLI::App& app, const char* name, std::optional<UserText>& value, const char* what) {
    app.add_option_function<std::string>(
        name, [&value](const std::string& text) { value = text; }, what);
}
