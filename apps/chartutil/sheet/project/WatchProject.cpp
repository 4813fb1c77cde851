// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/Observer.h"
#include "apps/chartutil/sheet/Sheet.h"
#include "apps/chartutil/sheet/project/FileWatch.h"
#include "apps/chartutil/sheet/project/Project.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/work/LongWork.h"

namespace {

class Redraw final : public UTL::Subscriber {
public:
    explicit Redraw(const std::function<void()>& redraw) : m_redraw(redraw) {}
    void OnNotify(int code) override {
        if (code == kProjectChanged) m_redraw();
    }

private:
    const std::function<void()>& m_redraw;
};

// Those of before while the settings cannot be read.
void Update(std::vector<UserText>& files, const UserText& folder) {
    try {
        files = FilesOf(folder);
    } catch (const CommandError&) { // told by whoever draws
        return;
    }
}

} // namespace

void WatchProject(const UserText& folder, const std::function<void()>& redraw) {
    constexpr std::chrono::milliseconds kLook(100); // for Ctrl-C
    std::vector<UserText> files = FilesOf(folder);
    Redraw subscriber(redraw);
    UTL::Observer& observer = UTL::Observer::Get();
    observer.Subscribe(&subscriber, folder.Wide());
    while (true) {
        FileWatch watch(files); // before they are read, so that no change is missed
        observer.Notify(folder.Wide(), kProjectChanged);
        while (!watch.Wait(kLook)) StopIfInterrupted();
        Update(files, folder);
    }
}
