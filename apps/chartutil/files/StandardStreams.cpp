// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/StandardStreams.h"

#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"

#include <iostream>
#include <streambuf>

namespace {

void Take(bool& isTaken, const char* name) {
    if (isTaken)
        throw CommandError(ExitCode::WRONG_USE,
                           std::string("two files cannot both be ") + name + "; give one of them a name");
    isTaken = true;
}

} // namespace

bool IsStandardStream(const UserText& path) { return path.Utf8() == "-"; }

std::string InputName(const UserText& path) {
    return IsStandardStream(path) ? "standard input" : path.Utf8();
}

std::string OutputName(const UserText& path) {
    return IsStandardStream(path) ? "standard output" : path.Utf8();
}

StandardStreams* StandardStreams::current = nullptr;

StandardStreams::StandardStreams() : m_output(std::cout.rdbuf()) { current = this; }

StandardStreams::~StandardStreams() {
    if (m_isOutputTaken) std::cout.rdbuf(m_output); // which forgets that a write has failed
    current = nullptr;
}

void StandardStreams::TakeInput() {
    if (current) Take(current->m_isInputTaken, "standard input");
}

void StandardStreams::TakeOutput() {
    if (!current) return;
    Take(current->m_isOutputTaken, "standard output");
    std::cout.flush();
    std::cout.rdbuf(std::cerr.rdbuf());
}

void StandardStreams::Write(std::string_view bytes) {
    std::streambuf& output = current ? *current->m_output : *std::cout.rdbuf();
    const std::string shown = Printable(bytes);
    const auto size = static_cast<std::streamsize>(shown.size());
    if (output.sputn(shown.data(), size) != size || output.pubsync() != 0)
        throw CommandError(ExitCode::IO_ERROR, "standard output cannot be written");
}
