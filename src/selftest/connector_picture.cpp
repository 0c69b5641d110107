#include "selftest/connector_picture.h"

#include <algorithm>
#include <string>

namespace tamrix {

namespace {

// All in twips, 15 to the pixel of a common screen.
constexpr int margin = 120, number_height = 240, largest_lamp = 300, led = 120;
constexpr int columns = 5, rows = 2;
constexpr forms::point least_programmer{.x = 4200, .y = 1500}, least_connector{.x = 4200, .y = 1800};
constexpr forms::colour body = 0xD0D0D0;

}  // namespace

connector_picture::connector_picture(forms::picture& programmer, forms::picture& connector)
    : Shape1{connector, pins}, programmer_{programmer}, connector_{connector}
{
    for (int lamp = 0; lamp < pins; ++lamp) Shape1(lamp).kind = forms::outline::ellipse;
    programmer.extent = least_programmer;
    connector.extent = least_connector;
    programmer.on_resize = [this] { draw_programmer(); };
    connector.on_resize = [this] { draw_connector(); };
    clear();
    draw_programmer();
    draw_connector();
}

void connector_picture::paint_lamp(int lamp, forms::colour fill)
{
    if (lamp >= 0 && lamp < pins) Shape1(lamp).fill = fill;
}

void connector_picture::clear()
{
    connector_.draw([this] {
        for (int lamp = 0; lamp < pins; ++lamp) paint_lamp(lamp, lamps::white);
    });
}

/// The lead leaves the body at its lower edge, towards the connector below.
void connector_picture::draw_programmer()
{
    programmer_.draw([this] {
        programmer_.clear(lamps::white);
        const forms::point size = programmer_.size();
        const forms::area box{.left = margin,
                              .top = margin,
                              .width = std::max(1, size.x - 2 * margin),
                              .height = std::max(1, size.y * 2 / 3 - margin)};
        programmer_.figure(forms::outline::rectangle, box, body, lamps::black);
        programmer_.figure(forms::outline::ellipse,
                           {.left = box.left + margin, .top = box.top + margin, .width = led, .height = led},
                           lamps::green, lamps::black);
        for (int wire = 0; wire < columns; ++wire) {
            const int x = size.x / 2 + (wire - columns / 2) * margin;
            programmer_.line({.x = x, .y = box.top + box.height}, {.x = x, .y = size.y}, lamps::black);
        }
    });
}

void connector_picture::draw_connector()
{
    connector_.draw([this] {
        connector_.clear(lamps::white);
        const forms::point size = connector_.size();
        const forms::point cell{.x = std::max(1, (size.x - 2 * margin) / columns),
                                .y = std::max(1, (size.y - 2 * margin) / rows)};
        connector_.figure(forms::outline::rectangle,
                          {.left = margin, .top = margin, .width = columns * cell.x, .height = rows * cell.y}, body,
                          lamps::black);
        for (int lamp = 0; lamp < pins; ++lamp) place_pin(lamp, cell);
    });
}

void connector_picture::place_pin(int lamp, forms::point cell)
{
    const int width = std::max(1, std::min({largest_lamp, cell.x * 3 / 4, cell.y - number_height}));
    const int left = margin + lamp / rows * cell.x;
    const int top = margin + lamp % rows * cell.y + (cell.y - width - number_height) / 2;
    Shape1(lamp).place = {.left = left + (cell.x - width) / 2, .top = top, .width = width, .height = width};
    connector_.text({.x = left + (cell.x - width) / 2, .y = top + width}, std::to_string(lamp + 1), lamps::black);
}

}  // namespace tamrix
