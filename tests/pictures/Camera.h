// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

class CWnd;

/// Takes pictures of what the screen shows, as PNG files. There is one at a time, while there is an
/// EventLoop.
class Camera {
public:
    /// A picture is the prefix, its name, the suffix and ".png". The theme is "light" or, where the look of
    /// dialogs can be chosen for one program, "dark".
    Camera(std::string prefix, std::string suffix, const std::string& theme);
    ~Camera();
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;

    /// The dialog that is open, with the hints over it.
    void TakeDialog(const std::string& name) const;

    /// The controls, one below the other in a window of a host.
    void TakeControls(const std::string& name, const std::vector<CWnd*>& controls) const;

private:
    struct Native;
    const std::unique_ptr<Native> m_native;
};
