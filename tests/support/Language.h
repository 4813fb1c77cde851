// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/module/UtilityDLL.h"
#include "VelmBase/Environment.h"
#include "VelmBase/Module.h"
#include "VelmBase/ResourceModule.h"
#include "tests/support/Environment.h"

/// Lets the library choose its language anew, as if it were loaded now.
inline void ChooseLanguageAnew() {
    void* const module = ModuleAt(reinterpret_cast<const void*>(&UtilityDLLStartUp));
    VELMSUITE::LoadDLLResourceDLL(module, module);
}

/// An environment variable for as long as this object lives; an empty value takes it away.
class EnvironmentSetting {
public:
    EnvironmentSetting(std::wstring name, const std::wstring& value)
        : m_name(std::move(name)), m_before(EnvironmentVariable(m_name)) {
        SetEnvironment(m_name, value);
    }
    ~EnvironmentSetting() { SetEnvironment(m_name, m_before); }
    EnvironmentSetting(const EnvironmentSetting&) = delete;
    EnvironmentSetting& operator=(const EnvironmentSetting&) = delete;

private:
    std::wstring m_name, m_before;
};
