#include "hexview/hex_view.h"

#include <algorithm>
#include <utility>

#include <wx/settings.h>

namespace tamrix::hexview {

using editing::bytes_in_row;

namespace {

constexpr std::size_t measured_letters = 100;
constexpr int smallest_letters = 24, smallest_rows = 4, usual_rows = 20;

}  // namespace

hex_view::hex_view(wxWindow* parent)
    : wxWindow{parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
               wxVSCROLL | wxHSCROLL | wxWANTS_CHARS | wxBORDER_THEME | wxFULL_REPAINT_ON_RESIZE}
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetFont(wxFont{wxFontInfo(GetFont().GetPointSize()).Family(wxFONTFAMILY_TELETYPE)});
    letter_ = GetTextExtent(wxString(measured_letters, '0')).x / static_cast<double>(measured_letters);
    row_ = GetCharHeight() + FromDIP(3);
    SetMinClientSize({width_of(smallest_letters), smallest_rows * row_});

    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        scroll_to(top_);
    });
    for (const auto& kind :
         {wxEVT_SCROLLWIN_TOP, wxEVT_SCROLLWIN_BOTTOM, wxEVT_SCROLLWIN_LINEUP, wxEVT_SCROLLWIN_LINEDOWN,
          wxEVT_SCROLLWIN_PAGEUP, wxEVT_SCROLLWIN_PAGEDOWN, wxEVT_SCROLLWIN_THUMBTRACK, wxEVT_SCROLLWIN_THUMBRELEASE}) {
        Bind(kind, &hex_view::on_scroll, this);
    }
    Bind(wxEVT_MOUSEWHEEL, &hex_view::on_wheel, this);
    Bind(wxEVT_LEFT_DOWN, &hex_view::on_press, this);
    Bind(wxEVT_MOTION, &hex_view::on_drag, this);
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { end_drag(); });
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { drag_timer_.Stop(); });
    drag_timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { drag_on(); });
    Bind(wxEVT_KEY_DOWN, &hex_view::on_key, this);
    Bind(wxEVT_CHAR, &hex_view::on_char, this);
    const auto repaint = [this](wxFocusEvent& event) {
        event.Skip();
        Refresh(false);
    };
    Bind(wxEVT_SET_FOCUS, repaint);
    Bind(wxEVT_KILL_FOCUS, repaint);
}

wxSize hex_view::DoGetBestClientSize() const
{
    return {whole_width() + wxSystemSettings::GetMetric(wxSYS_VSCROLL_X), (usual_rows + 1) * row_};
}

void hex_view::show(std::span<const std::uint8_t> bytes)
{
    bytes_ = bytes;
    read_ = nullptr;
    show_length(bytes.size());
}

void hex_view::show(std::size_t length, row_reader read)
{
    bytes_ = {};
    read_ = std::move(read);
    show_length(length);
}

void hex_view::show_length(std::size_t length)
{
    const bool other_length = length != length_;
    length_ = length;
    if (other_length) cursor_.resize(length);
    scroll_to(top_);
    moved();
}

void hex_view::go_to(std::size_t address)
{
    cursor_.go_to(address);
    keep_cursor_in_sight();
    moved();
}

void hex_view::select(editing::byte_range range)
{
    cursor_.select(range);
    keep_cursor_in_sight();
    moved();
}

void hex_view::select_all()
{
    cursor_.select_all();
    moved();
}

void hex_view::moved()
{
    Refresh(false);
    if (on_move) on_move();
}

std::size_t hex_view::rows_in_sight() const
{
    return static_cast<std::size_t>(std::max(1, (GetClientSize().y - row_) / std::max(1, row_)));
}

void hex_view::scroll_to(std::size_t row)
{
    const std::size_t in_sight = rows_in_sight();
    top_ = std::min(row, rows() > in_sight ? rows() - in_sight : 0);
    left_ = std::clamp(left_, 0, std::max(0, whole_width() - GetClientSize().x));
    update_scrollbars();
    Refresh(false);
    if (on_scrolled) on_scrolled();
}

void hex_view::follow(const hex_view& other)
{
    cursor_ = other.cursor_;
    top_ = other.top_;
    left_ = other.left_;
    update_scrollbars();
    Refresh(false);
}

void hex_view::keep_cursor_in_sight()
{
    const std::size_t row = cursor_.address() / bytes_in_row;
    if (row < top_) {
        scroll_to(row);
    } else if (row >= top_ + rows_in_sight()) {
        scroll_to(row - rows_in_sight() + 1);
    }
    const std::size_t index = cursor_.address() % bytes_in_row;
    const bool digits = cursor_.side() == editing::column::hexadecimal;
    const int begin = digits ? hex_column(index) : character_column(index);
    const int end = begin + width_of(digits ? 2 : 1) + margin;
    const int width = GetClientSize().x;
    if (begin - margin < left_) left_ = index == 0 && digits ? 0 : begin - margin;
    if (end > left_ + width) left_ = end - width;
    update_scrollbars();
}

void hex_view::update_scrollbars()
{
    SetScrollbar(wxVERTICAL, static_cast<int>(top_), static_cast<int>(rows_in_sight()), static_cast<int>(rows()));
    const int width = GetClientSize().x;
    SetScrollbar(wxHORIZONTAL, left_, width, std::max(width, whole_width()));
}

}  // namespace tamrix::hexview
