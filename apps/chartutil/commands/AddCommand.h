// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/UserText.h"
#include "apps/chartutil/work/LongWork.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A command in the making: what the command line offers is added to `app` and read into `options`.
template <typename Options> struct NewCommand {
    CLI::App& app;
    Options& options;
};

/// Whether these options ask for long work: what their IsLong() says, and no without one.
template <typename Options> bool IsLong(const Options& options) {
    if constexpr (requires { options.IsLong(); })
        return options.IsLong();
    else
        return false;
}

/// Adds a command with options of its own, which `run` gets when the user asks for the command. Ctrl-C stops
/// it in good order.
template <typename Options>
NewCommand<Options> AddCommand(CLI::App& parent, const char* name, const char* what,
                               void (*run)(const Options&), const std::string& footer) {
    CLI::App& app = *parent.add_subcommand(name, what);
    const auto options = std::make_shared<Options>();
    app.footer(footer);
    app.callback([options, run] {
        const StandardStreams streams;
        const auto work = [&] { run(*options); };
        IsLong(*options) ? DoLongWork(work) : DoShortWork(work);
    });
    return {app, *options};
}

/// Adds an option that may be left out. An empty text, as an unset variable of a script gives it, was given.
inline CLI::Option* AddOptional(CLI::App& app, const char* name, std::optional<UserText>& value,
                                const char* what) {
    return app.add_option_function<std::string>(
        name, [&value](const std::string& text) { value = text; }, what);
}

/// Names that help and shells offer for an option, whose command says itself what is wrong with another.
inline CLI::Validator OfferedNames(const std::vector<std::string>& names) {
    return {[](std::string&) { return std::string(); }, '{' + CLI::detail::join(names, ",") + '}'};
}

/// Lets numbers without an option's name begin with "-.", which the parser takes for an option of that name.
inline void AllowPointAfterMinus(CLI::App& app, CLI::Option& numbers) {
    app.add_option_function<std::string>("-.",
                                         [&numbers](const std::string& digits) {
                                             numbers.add_result("-." +
                                                                digits); // in its place among the others
                                         })
        ->trigger_on_parse()
        ->group("");
}
