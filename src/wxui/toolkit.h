// wxWidgets under the dialogs: the host's where it runs one, else one of our own from the first dialog on.
#pragma once

#include <array>

namespace tamrix::wxui {

class toolkit {
public:
    toolkit() = default;
    ~toolkit();
    toolkit(const toolkit&) = delete;
    toolkit& operator=(const toolkit&) = delete;

    /// Throws std::runtime_error where no window can be opened.
    void need_display();

private:
    void start();

    bool started_ = false;
    std::array<char, 7> name_{"tamrix"};
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    int argument_count_ = 1;
};

}  // namespace tamrix::wxui
