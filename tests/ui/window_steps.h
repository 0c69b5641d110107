// Windows that come one after the other, each with a loop of its own, such as the preview and the printer's dialog.
#pragma once

#include "gtk_window.h"
#include "over_host.h"

#include <cstddef>
#include <functional>
#include <set>
#include <vector>

namespace tamrix::tests {

/// Such a dialog is none of wxWidgets' own windows, so that nothing says when it listens: Escape until it does.
class escape_timer final : public wxTimer {
public:
    explicit escape_timer(int every_ms = 500) { Start(every_ms); }
    void Notify() override
    {
        if (const gtk_window front = gtk_window::in_front(); !front.has_keyboard()) front.take_keyboard();
        press("Escape");
    }
};

using window_step = std::function<void(gtk_window)>;

/// Calls `asks` and works each new window that comes to the front with the next step; one that is in front again
/// between two others is left alone. Escape ends a window that is still there long after that.
inline void step_by_step(const std::function<void()>& asks, const std::vector<window_step>& steps)
{
    const escape_timer leave{20000};
    std::set<unsigned long> seen{0, gtk_window::in_front().number()};
    std::size_t step = 0;
    const onlooker person{[&] {
        const gtk_window front = gtk_window::in_front();
        if (seen.contains(front.number()) || step == steps.size()) return;
        if (!front.has_keyboard()) return front.take_keyboard();
        seen.insert(front.number());
        steps[step++](front);
    }};
    asks();
    EXPECT_EQ(step, steps.size());
}

inline void accept_it(gtk_window) { press("Return"); }

inline void leave_it(gtk_window) { press("Escape"); }

/// Of a printer's dialog.
inline window_step print_to(const std::string& file, const char* format)
{
    return [=](gtk_window window) {
        window.print_to(file, format);
        press("Return");
    };
}

}  // namespace tamrix::tests
