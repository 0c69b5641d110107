#include "selftest/socket_picture.h"

#include <algorithm>

namespace tamrix {

namespace {

// All in twips, 15 to the pixel of a common screen.
constexpr int least_row = 220, least_width = 4200, margin = 120;
constexpr int mark_width = 240, lamp_gap = 60, number_width = 420, largest_lamp = 300, letter_height = 255;
constexpr forms::colour ground = 0xB0B0B0;  // that white and yellow differ from

}  // namespace

socket_picture::socket_picture(forms::picture& surface, lamps::socket drawn)
    : Shape3{surface}, Shape1{surface, drawn.pins}, Shape2{surface, drawn.pins}, surface_{surface}, drawn_{drawn}
{
    for (int pin = 1; pin <= drawn.pins; ++pin) Label1.push_back(std::to_string(pin));
    for (int item = 0; item < drawn.pins; ++item) Shape1(item).kind = forms::outline::ellipse;
    surface.extent = forms::point{.x = least_width, .y = drawn.pins / 2 * least_row + 2 * margin};
    surface.on_resize = [this] { arrange(); };
    clear();
    arrange();
}

void socket_picture::paint_lamp(int lamp, forms::colour fill)
{
    if (drawn_.has(lamp)) Shape1(lamp - drawn_.first_lamp).fill = fill;
}

void socket_picture::paint_lamp_and_border(int lamp, forms::colour ink)
{
    paint_lamp(lamp, ink);
    if (drawn_.has(lamp)) Shape1(lamp - drawn_.first_lamp).border = ink;
}

void socket_picture::paint_mark(int lamp, forms::colour ink)
{
    if (!drawn_.has(lamp)) return;
    Shape2(lamp - drawn_.first_lamp).fill = ink;
    Shape2(lamp - drawn_.first_lamp).border = ink;
}

void socket_picture::clear()
{
    surface_.draw([this] {
        for (int lamp = drawn_.first_lamp; drawn_.has(lamp); ++lamp) {
            paint_lamp(lamp, lamps::white);
            paint_mark(lamp, lamps::black);
        }
    });
}

/// Blanks at the beginning are for another place.
void socket_picture::hint(int lamp, const std::string& words)
{
    const std::size_t first = words.find_first_not_of(' ');
    hints_[lamp] = first == std::string::npos ? "" : words.substr(first);
    arrange();
}

/// Pins run down the left side and up the right one.
void socket_picture::arrange()
{
    surface_.draw([this] {
        surface_.clear(ground);
        const forms::point size = surface_.size();
        const int rows = drawn_.pins / 2;
        const int height = std::max(1, (size.y - 2 * margin) / rows);
        const int edge = number_width + mark_width;
        Shape3.place = {.left = edge, .top = margin, .width = std::max(1, size.x - 2 * edge), .height = rows * height};
        for (int row = 0; row < rows; ++row) place_row(row, margin + row * height, height, size.x);
    });
}

void socket_picture::place_row(int row, int top, int height, int width)
{
    const int lamp = std::min(largest_lamp, height * 3 / 4);
    const int lamp_top = top + (height - lamp) / 2, mark_top = top + height * 3 / 8;
    const int text_top = top + (height - letter_height) / 2;
    const int edge = number_width + mark_width, right = drawn_.pins - 1 - row;
    Shape2(row).place = {.left = number_width, .top = mark_top, .width = mark_width, .height = height / 4};
    Shape2(right).place = {.left = width - edge, .top = mark_top, .width = mark_width, .height = height / 4};
    Shape1(row).place = {.left = edge + lamp_gap, .top = lamp_top, .width = lamp, .height = lamp};
    Shape1(right).place = {.left = width - edge - lamp_gap - lamp, .top = lamp_top, .width = lamp, .height = lamp};
    surface_.text({.x = lamp_gap, .y = text_top}, Label1[static_cast<std::size_t>(row)], lamps::black);
    surface_.text({.x = width - number_width + lamp_gap, .y = text_top}, Label1[static_cast<std::size_t>(right)],
                  lamps::black);
    if (const auto words = hints_.find(drawn_.first_lamp + row); words != hints_.end())
        surface_.text({.x = edge + 2 * lamp_gap + lamp, .y = text_top}, words->second, lamps::black);
}

}  // namespace tamrix
