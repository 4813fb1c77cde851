// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/ErrorString.h"

#include <QApplication>
#include <QTranslator>
#include <cerrno> // program_invocation_name
#include <optional>
#include <string>

/// The host's QApplication, or one of its own for as long as this lives. The process's locale is then as it
/// was, but for the user's characters meanwhile (LC_CTYPE).
class ApplicationForDialog {
public:
    ApplicationForDialog();
    ~ApplicationForDialog();
    ApplicationForDialog(const ApplicationForDialog&) = delete;
    ApplicationForDialog& operator=(const ApplicationForDialog&) = delete;

    /// Why there is none, and what to do; no error when there is one.
    const ErrorString& IsThere() const { return m_isThere; }

private:
    ErrorString m_isThere;
    int m_count = 1;
    char* m_arguments[2] = {program_invocation_name, nullptr};
    std::string m_locale; // of before
    std::optional<QApplication> m_application;
    QTranslator m_texts; // of Qt's own dialogs and buttons
};
