// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "VelmBase/ErrorString.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Where the errors of a plot are collected while it is composed, so that they can be shown together
/// afterwards. Each belongs to a context: any name, for example that of a layer. Names match exactly, letter
/// case included.
///
/// Get() is the one of the process, there from the loading of the library until it is unloaded. Not locked:
/// it is filled and read in the thread that composes, or calls are serialised by the host.
class UTILITYDLL_API PlotErrorReporter {
public:
    /// The reporter of the process.
    static PlotErrorReporter& Get();

    /// Copies hold the same contexts and errors, and are independent.
    /// @{
    PlotErrorReporter(const PlotErrorReporter& other);
    PlotErrorReporter& operator=(const PlotErrorReporter& other);
    /// @}

    ~PlotErrorReporter();

    /// The errors of the context, made empty where there were none yet, for the caller to append to. The
    /// reference holds until the context is cleared or the reporter assigned to, whatever other contexts come
    /// and go.
    std::vector<ErrorString>& operator[](const std::wstring& context);

    /// The names of all contexts that there are, with errors or without, in the order of their UTF-16 code
    /// units: capitals before small letters, a name before those that it begins, and characters above U+FFFF,
    /// on every platform, before those from U+E000 on.
    std::vector<std::wstring> GetContexts() const;

    /// Whether there is no such context. One that was only looked at by operator[] counts as reported for,
    /// even without an error.
    bool NoErrors(const std::wstring& context) const;

    /// Removes the context with its errors, or all of them.
    /// @{
    void Clear(const std::wstring& context);
    void Clear();
    /// @}

private:
    struct UnitsLess {
        bool operator()(std::wstring_view a, std::wstring_view b) const;
    };

    PlotErrorReporter();

    std::map<std::wstring, std::vector<ErrorString>, UnitsLess> m_errors;

    static PlotErrorReporter m_GlobalReporter;
};
