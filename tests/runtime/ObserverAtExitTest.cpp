// SPDX-License-Identifier: MIT
#include "tests/support/Program.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

// What the program says, and its exit code.
ProgramResult EndOfHost(const std::string& order, const std::string& way) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "input", "");
    ProgramResult result;
    result.exitCode = RunWithFiles(OBSERVER_AT_EXIT, {order, way}, folder.File(L"input"),
                                   folder.File(L"output"), folder.File(L"error"));
    result.output = ReadBytes(folder.Path() / "output");
    result.error = ReadBytes(folder.Path() / "error");
    return result;
}

TEST(Observer_AtExit, StaticSubscribersMayEndBeforeItAndAfterIt) {
    for (const char* const order : {"older", "younger", "unused"})
        for (const char* const way : {"return", "exit"}) {
            SCOPED_TRACE(std::string(order) + ' ' + way);
            const ProgramResult result = EndOfHost(order, way);
            EXPECT_EQ(0, result.exitCode);
            EXPECT_EQ("", result.error);
            std::vector<std::string> ended; // in order; only the last one may still be called, by itself
            std::istringstream lines(result.output);
            for (std::string line; std::getline(lines, line);) {
                if (!line.empty() && line.back() == '\r') line.pop_back();
                if (line.starts_with("end of ")) {
                    ended.push_back(line.substr(7));
                    continue;
                }
                const std::string called = line.substr(0, line.find(' '));
                for (std::size_t i = 0; i + 1 < ended.size(); ++i) EXPECT_NE(ended[i], called) << line;
            }
            EXPECT_EQ(3u, ended.size()) << result.output;
            const bool wasUsed = order != std::string("unused");
            EXPECT_EQ(wasUsed ? 0u : std::string::npos, result.output.find("library 0")) << result.output;
            for (const std::string& name : ended) // each can still use the observer
                EXPECT_NE(std::string::npos, result.output.find(name + " 2")) << result.output;
        }
}

} // namespace
