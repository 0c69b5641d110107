// The scroll bar: the toolkit's own, with the keys that the toolkits of some platforms leave out.
#include "forms/scroll_bar.h"

#include "wxui/widgets.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include <wx/scrolbar.h>

namespace tamrix::wxui {

namespace {

using forms::scroll_step;

std::optional<scroll_step> step_of(int key)
{
    switch (key) {
    case WXK_LEFT:
    case WXK_UP: return scroll_step::small_back;
    case WXK_RIGHT:
    case WXK_DOWN: return scroll_step::small_on;
    case WXK_PAGEUP: return scroll_step::large_back;
    case WXK_PAGEDOWN: return scroll_step::large_on;
    case WXK_HOME: return scroll_step::to_min;
    case WXK_END: return scroll_step::to_max;
    default: return std::nullopt;
    }
}

class scroll_bar_widget final : public widget {
public:
    scroll_bar_widget(forms::scroll_bar& control, wxWindow* parent, callback_guard& guard)
        : control_{control}, bar_{new wxScrollBar{parent, wxID_ANY}}, guard_{guard}
    {
        bar_->SetCanFocus(true);
        on(wxEVT_SCROLL_LINEUP, scroll_step::small_back);
        on(wxEVT_SCROLL_LINEDOWN, scroll_step::small_on);
        on(wxEVT_SCROLL_PAGEUP, scroll_step::large_back);
        on(wxEVT_SCROLL_PAGEDOWN, scroll_step::large_on);
        on(wxEVT_SCROLL_TOP, scroll_step::to_min);
        on(wxEVT_SCROLL_BOTTOM, scroll_step::to_max);
        bar_->Bind(wxEVT_SCROLL_THUMBTRACK, [this](wxScrollEvent& event) { drag(event.GetPosition()); });
        bar_->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
            const auto how = event.HasAnyModifiers() ? std::nullopt : step_of(event.GetKeyCode());
            if (how) {
                step(*how);
            } else {
                event.Skip();
            }
        });
        bar_->Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
            bar_->SetFocus();
            event.Skip();
        });
    }

    bool update() override
    {
        bar_->Enable(control_.enabled());
        const bool other_room = bar_->Show(control_.visible());
        const int page = scaled(std::max(1, control_.large_change()));
        bar_->SetScrollbar(scaled(distance(control_.value())), page, scaled(distance(control_.max())) + page, page);
        return other_room;
    }
    wxWindow* window() const override { return bar_; }

private:
    using step_event = wxEventTypeTag<wxScrollEvent>;

    void on(const step_event& event, scroll_step how)
    {
        bar_->Bind(event, [this, how](wxScrollEvent&) { step(how); });
    }

    void step(scroll_step how)
    {
        guard_([&] { control_.step(how); });
        update();  // the toolkit has moved its slider by a step of its own
    }

    void drag(std::int64_t position)
    {
        guard_([&] { control_.drag(static_cast<std::int32_t>(control_.min() + position * unit())); });
    }

    std::int64_t distance(std::int32_t value) const { return std::int64_t{value} - control_.min(); }

    /// How much of the value one step of the toolkit's slider is: its own numbers have no room for two pages more than
    /// the largest range.
    std::int64_t unit() const
    {
        constexpr std::int64_t room = 0x20000000;
        return std::max(distance(control_.max()), std::int64_t{control_.large_change()}) / room + 1;
    }

    int scaled(std::int64_t length) const { return static_cast<int>(length / unit()); }

    forms::scroll_bar& control_;
    wxScrollBar* bar_;
    callback_guard& guard_;
};

}  // namespace

widget_ptr make_scroll_bar(forms::scroll_bar& control, wxWindow* parent, callback_guard& guard)
{
    return std::make_unique<scroll_bar_widget>(control, parent, guard);
}

}  // namespace tamrix::wxui
