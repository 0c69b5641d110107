// The drawn programmer with its lead, and the connector at the lead's end with a lamp for each of its pins. Both follow
// the size of their pictures.
#pragma once

#include "forms/shape.h"
#include "selftest/lamps.h"

namespace tamrix {

class connector_picture {
public:
    /// Two rows of five pins; lamp i is pin i + 1. The odd pins are in the upper row.
    static constexpr int pins = 10;

    /// Both pictures have to outlive it.
    connector_picture(forms::picture& programmer, forms::picture& connector);

    forms::shape_array Shape1;  // the lamps

    /// Does nothing for a lamp that the connector does not have.
    void paint_lamp(int lamp, forms::colour fill);
    /// All lamps are white.
    void clear();

private:
    void draw_programmer();
    void draw_connector();
    void place_pin(int lamp, forms::point cell);

    forms::picture& programmer_;
    forms::picture& connector_;
};

}  // namespace tamrix
