// The drawn socket: its outline, a lamp and a mark a pin, and the pins' numbers. It follows the size of its picture.
#pragma once

#include "forms/shape.h"
#include "selftest/lamps.h"

#include <map>
#include <string>
#include <vector>

namespace tamrix {

/// Lamps and marks are addressed by the lamp's number; one that this socket does not have is not painted.
class socket_picture {
public:
    /// `surface` has to outlive it.
    socket_picture(forms::picture& surface, lamps::socket drawn);

    forms::shape Shape3;                // the outline
    forms::shape_array Shape1, Shape2;  // lamps and marks; item i is pin i + 1
    std::vector<std::string> Label1;    // the pins' numbers

    lamps::socket drawn() const { return drawn_; }
    void paint_lamp(int lamp, forms::colour fill);
    void paint_lamp_and_border(int lamp, forms::colour ink);
    /// Fill and border.
    void paint_mark(int lamp, forms::colour ink);
    /// Words beside a lamp of the left column, inside the outline; they stay until others, or none, replace them.
    void hint(int lamp, const std::string& words);
    /// All lamps are white and all marks black.
    void clear();

private:
    void arrange();
    void place_row(int row, int top, int height, int width);

    forms::picture& surface_;
    lamps::socket drawn_;
    std::map<int, std::string> hints_;  // by lamp
};

}  // namespace tamrix
