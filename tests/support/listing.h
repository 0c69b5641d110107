// A canvas for tests that writes down the calls that reach it.
#pragma once

#include "forms/canvas.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::tests {

/// `Base` is forms::canvas, or what derives from it.
template <class Base>
class listing : public Base {
public:
    std::vector<std::string> calls;

    void clear(forms::colour background) override { calls.push_back("clear " + number(background)); }
    void line(forms::point from, forms::point to, forms::colour ink) override
    {
        calls.push_back("line " + place(from) + " " + place(to) + " " + number(ink));
    }
    void text(forms::point at, std::string_view words, forms::colour ink) override
    {
        calls.push_back("text " + place(at) + " " + number(ink) + " " + std::string{words});
    }
    void figure(forms::outline kind, const forms::area& where, std::optional<forms::colour> fill,
                forms::colour border) override
    {
        calls.push_back(std::string{kind == forms::outline::ellipse ? "ellipse " : "rectangle "} +
                        place({where.left, where.top}) + " " + place({where.width, where.height}) + " " +
                        (fill ? number(*fill) : "open") + " " + number(border));
    }

private:
    static std::string number(forms::colour value) { return std::to_string(value); }
    static std::string place(forms::point at) { return std::to_string(at.x) + "," + std::to_string(at.y); }
};

}  // namespace tamrix::tests
