// SPDX-License-Identifier: MIT
// Two windows of a document hear that it changed, and that it got another name.
#include <UtilityDLL/runtime/Observer.h>

#include <iostream>

constexpr int kChanged = 1; // agreed between the parts of the host

class View : public UTL::Subscriber {
public:
    explicit View(const wchar_t* name) : m_name(name) {}
    void OnNotify(int code) override {
        const UTL::Observer& observer = UTL::Observer::Get();
        std::wcout << m_name << L": " << observer.GetCurrentContext();
        if (code == UTL::Observer::RENAMED)
            std::wcout << L" was called " << observer.GetPreviousContext();
        std::wcout << (code == kChanged ? L" has changed\n" : L"\n");
    }

private:
    const wchar_t* m_name;
};

int main() {
    UTL::Observer& observer = UTL::Observer::Get();
    View map(L"map");
    observer.Subscribe(&map, L"bay.chart");
    {
        View list(L"list");
        observer.Subscribe(&list, L"bay.chart");
        observer.Notify(L"bay.chart", kChanged); // the latest first
    }                                            // its destructor unsubscribes it
    observer.RenameSubscribers(L"bay.chart", L"harbour.chart");
    observer.Notify(L"bay.chart", kChanged); // nobody is left there
}
