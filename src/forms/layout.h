// How a form arranges its controls: nested rows, columns and framed groups. Reading order is also tab order.
#pragma once

#include "forms/controls.h"

#include <initializer_list>
#include <utility>
#include <vector>

namespace tamrix::forms {

struct layout {
    enum class kind {
        item,      // one control
        row,       // children from left to right
        column,    // children from top to bottom
        fields,    // children in pairs, label and field, in two aligned columns
        measures,  // children in threes, label, field and unit, in three aligned columns
        buttons,   // a row of buttons of equal width, at the right edge
    };

    kind what = kind::column;
    control* item = nullptr;  // of kind item
    frame* border = nullptr;  // around a row or column; may be null
    bool stretch = false;     // takes the room that is left
    std::vector<layout> children;

    layout(control& only) : what{kind::item}, item{&only} {}
    layout(kind arrangement, std::vector<layout> parts) : what{arrangement}, children{std::move(parts)} {}
};

inline layout row(std::initializer_list<layout> parts) { return {layout::kind::row, parts}; }
inline layout column(std::initializer_list<layout> parts) { return {layout::kind::column, parts}; }
inline layout fields(std::initializer_list<layout> parts) { return {layout::kind::fields, parts}; }
inline layout measures(std::initializer_list<layout> parts) { return {layout::kind::measures, parts}; }
/// An empty cell of an arrangement.
inline layout nothing() { return {layout::kind::row, {}}; }
inline layout buttons(std::initializer_list<layout> parts) { return {layout::kind::buttons, parts}; }

inline layout framed(frame& border, layout inside)
{
    inside.border = &border;
    return inside;
}

inline layout stretched(layout inside)
{
    inside.stretch = true;
    return inside;
}

}  // namespace tamrix::forms
