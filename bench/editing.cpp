// Times the steps of a person in the view of a buffer of 264 MiB, each with its repaint. bench_editing prints
// "NAME MILLISECONDS": the median step of each kind, and the longest one as NAME_longest. Needs a display.
#include "editing/byte_search.h"
#include "editing/document.h"
#include "hexview/hex_view.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include <wx/app.h>
#include <wx/frame.h>

namespace tamrix {

namespace {

constexpr std::size_t buffer_bytes = 264 * std::size_t{1024} * 1024;
constexpr int steps = 200;

class editing_app final : public wxApp {};

class bench {
public:
    bench()
    {
        document_.change_device("large");
        for (std::size_t i = 0; i < buffer_.size(); ++i) buffer_[i] = static_cast<std::uint8_t>(i * 2654435761U >> 24);
        window_->SetClientSize(window_->FromDIP(wxSize{900, 800}));
        view_->on_type = [this](std::size_t address, std::uint8_t byte) {
            document_.replace(address, {&byte, 1}, "Typing");
        };
        view_->different = [this](std::size_t address) {
            const std::vector<bool> flags = document_.differs_from_saved(address, editing::bytes_in_row);
            return static_cast<hexview::row_bits>(std::ranges::count(flags, true) > 0 ? 1 : 0);
        };
        view_->show(document_.bytes());
        window_->Show();
        wxTheApp->Yield();
        view_->Update();
    }
    ~bench() { window_->Destroy(); }

    void run()
    {
        time("typing", [this](int) { key(wxEVT_CHAR, '5', false); });
        time("paging", [this](int) { key(wxEVT_KEY_DOWN, WXK_PAGEDOWN, false); });
        time("going_to_the_end", [this](int i) { key(wxEVT_KEY_DOWN, i % 2 == 0 ? WXK_END : WXK_HOME, false, true); });
        time("selecting_to_the_end",
             [this](int i) { key(wxEVT_KEY_DOWN, i % 2 == 0 ? WXK_END : WXK_HOME, true, true); });
        editing::byte_finder finder{document_.bytes(), {1, 2, 3, 4, 5, 6, 7, 8}, {0, buffer_bytes}, 0};
        bool done = false;
        time(
            "searching", [&](int) { done = done || finder.look(); }, 40);
        time("undo", [this](int) { document_.undo(); });
    }

private:
    void key(wxEventType kind, int code, bool shift, bool control = false)
    {
        wxKeyEvent event{kind};
        event.m_keyCode = code;
        event.m_uniChar = kind == wxEVT_CHAR ? code : 0;
        event.SetShiftDown(shift);
        event.SetControlDown(control);
        view_->GetEventHandler()->ProcessEvent(event);
    }

    void time(const char* name, const std::function<void(int)>& step, int count = steps)
    {
        std::vector<double> times;
        for (int i = 0; i < count; ++i) {
            const auto begin = std::chrono::steady_clock::now();
            step(i);
            view_->Refresh(false);
            view_->Update();
            wxTheApp->Yield();
            times.push_back(
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
        }
        std::ranges::sort(times);
        std::printf("%s %.3f\n%s_longest %.3f\n", name, times[times.size() / 2], name, times.back());
    }

    std::vector<std::uint8_t> buffer_ = std::vector<std::uint8_t>(buffer_bytes);
    editing::document document_{[this](const std::string&) { return std::span<std::uint8_t>{buffer_}; }};
    wxFrame* window_ = new wxFrame{nullptr, wxID_ANY, "bench"};
    hexview::hex_view* view_ = new hexview::hex_view{window_};
};

}  // namespace

}  // namespace tamrix

int main(int count, char** arguments)
{
    wxApp::SetInstance(new tamrix::editing_app);
    if (!wxEntryStart(count, arguments)) return 1;
    tamrix::bench{}.run();
    wxEntryCleanup();
}
