// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/runtime/Observer.h"

#include <cstdio>

/// A static object of a host: it says when it is called, and at its end uses the observer in every way.
class Witness : public UTL::Subscriber {
public:
    explicit Witness(const char* name) : m_name(name) {}
    ~Witness() override {
        UTL::Observer& observer = UTL::Observer::Get();
        std::printf("end of %s\n", m_name);
        observer.Notify(L"exit", 1);
        observer.RenameSubscribers(L"exit", L"renamed");
        observer.RenameSubscribers(L"renamed", L"exit");
        observer.Subscribe(this, L"exit");
        observer.Notify(observer.GetCurrentContext(), 2);
        observer.Clear(L"other");
        std::fflush(stdout);
    }
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;
    void OnNotify(int code) override { std::printf("%s %d\n", m_name, code); }

private:
    const char* m_name;
};
