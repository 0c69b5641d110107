// The timing diagram on paper. It is as many twips wide as on the screen: what does not fit on the page is lost.
#pragma once

#include "forms/page.h"
#include "instruments/analyzer/analyzer_drawing.h"

#include <span>
#include <string>
#include <vector>

namespace tamrix {

/// Axes, row bars, traces and ruler, all black, from the diagram's upper left corner.
std::vector<analyzer_line> page_lines(std::span<const std::uint8_t> samples, const analyzer_view& view);

/// The texts of the form that are printed below the diagram.
struct page_text {
    std::string first;                  // begins with a line break
    std::array<std::string, 3> others;  // in the line of the first
    std::string heading;
};

/// Their lines, from the one in which the ruler ends.
std::vector<std::string> lines_of(const page_text& text);

/// Prints a page whose diagram begins at a fixed distance from the paper's edges.
void print_page(forms::page& paper, std::span<const std::uint8_t> samples, const analyzer_view& view,
                const page_text& text);

}  // namespace tamrix
