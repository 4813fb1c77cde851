#pragma once

#include "VelmBase/ErrorString.h"

#include <QApplication>
#include <optional>

/// The host's QApplication, or one of its own for as long as this lives.
class ApplicationForDialog {
public:
    ApplicationForDialog();

    /// Why there is none, and what to do; no error when there is one.
    const ErrorString& IsThere() const { return m_isThere; }

private:
    ErrorString m_isThere;
    int m_count = 1;
    char m_name[10] = "utility";
    char* m_arguments[2] = {m_name, nullptr};
    std::optional<QApplication> m_application;
};
