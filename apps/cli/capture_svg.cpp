#include "cli/capture_picture.h"
#include "instruments/analyzer/analyzer_drawing.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

namespace tamrix::cli {

namespace {

constexpr std::int32_t twips_a_pixel = 15;
/// Of the diagram, and of the edges around it.
constexpr std::int32_t usual_width = 14400, height = 5400, row_height = height / 9;
constexpr std::int32_t left_edge = 700, top_edge = 150, right_edge = 500, bottom_edge = 450;

std::string number(std::int32_t value) { return std::to_string(value); }

std::string code_of(forms::colour ink)
{
    char text[16];
    std::snprintf(text, sizeof text, "#%06x", static_cast<unsigned>(ink));
    return text;
}

/// The lines of each colour as one path. Level lines that touch are one.
class paths {
public:
    void add(const analyzer_line& line)
    {
        if (line.from.y != line.to.y) {
            path_of(line.ink) += "M" + number(line.from.x) + " " + number(line.from.y) + "V" + number(line.to.y);
            return;
        }
        const std::pair place{line.ink, line.from.y};
        const auto [open, is_new] = open_.try_emplace(place, line);
        if (is_new) return;
        if (open->second.to.x != line.from.x) {
            end(open->second);
            open->second.from.x = line.from.x;
        }
        open->second.to.x = line.to.x;
    }

    /// In the order in which the colours came.
    std::string text()
    {
        for (const auto& [place, line] : open_) end(line);
        open_.clear();
        std::string all;
        for (const auto& [ink, path] : paths_) all += "<path stroke=\"" + code_of(ink) + "\" d=\"" + path + "\"/>\n";
        return all;
    }

private:
    std::string& path_of(forms::colour ink)
    {
        const auto known = std::ranges::find(paths_, ink, &std::pair<forms::colour, std::string>::first);
        return known != paths_.end() ? known->second : paths_.emplace_back(ink, "").second;
    }
    void end(const analyzer_line& line)
    {
        path_of(line.ink) += "M" + number(line.from.x) + " " + number(line.from.y) + "H" + number(line.to.x);
    }

    std::vector<std::pair<forms::colour, std::string>> paths_;
    std::map<std::pair<forms::colour, std::int32_t>, analyzer_line> open_;  // by colour and height
};

std::string words_at(std::int32_t x, std::int32_t y, const std::string& words)
{
    return "<text x=\"" + number(x) + "\" y=\"" + number(y) + "\">" + words + "</text>\n";
}

std::string opening(std::int32_t width, const std::string& title)
{
    const std::int32_t all_across = left_edge + width + right_edge, all_down = top_edge + height + bottom_edge;
    const auto pixels = [](std::int32_t twips) { return number(twips / twips_a_pixel); };
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
           pixels(all_across) + "\" height=\"" + pixels(all_down) + "\" viewBox=\"" + number(-left_edge) + " " +
           number(-top_edge) + " " + number(all_across) + " " + number(all_down) + "\">\n<title>" + title +
           "</title>\n<rect x=\"" + number(-left_edge) + "\" y=\"" + number(-top_edge) + "\" width=\"" +
           number(all_across) + "\" height=\"" + number(all_down) + "\" fill=\"#e0e0e0\"/>\n<rect width=\"" +
           number(width) + "\" height=\"" + number(height) + "\" fill=\"#008080\"/>\n";
}

/// Channels at the left; times on the picture as on the screen, and their samples below it.
std::string all_words(const capture_view& seen, const analyzer_view& view)
{
    constexpr int first_pin = 21;
    std::string text = "<g font-family=\"sans-serif\" font-size=\"220\">\n";
    for (std::int32_t i = 0; i < analyzer_channels; ++i)
        text += words_at(80 - left_edge, i * row_height + 400, "P" + number(first_pin + i));
    const auto times = time_labels({view.size, view.bitwidth, seen.from}, seen.period_us);
    for (std::int32_t i = 0; i < 4; ++i) {
        const std::int32_t x = i * view.size.x / 4;
        text += words_at(x + 30, height * 9 / 10 + 220, times[static_cast<std::size_t>(i)]);
        text += words_at(x, height + 300, (i == 0 ? "sample " : "") + number(seen.from + i * seen.count / 4));
    }
    return text + "</g>\n";
}

}  // namespace

std::string svg_of(const capture_view& seen)
{
    const std::int32_t bitwidth = std::max(1, usual_width / seen.count);
    const analyzer_view view{{seen.count * bitwidth, height}, static_cast<double>(bitwidth), seen.from - 1};
    paths drawn;
    for (const analyzer_line& line : analyzer_lines(seen.samples, view))
        if (line.from.x >= 0) drawn.add(line);
    char title[96];
    std::snprintf(title, sizeof title, "samples %d to %d, %.6g us each", seen.from, seen.from + seen.count - 1,
                  seen.period_us);
    return opening(view.size.x, title) + "<g fill=\"none\" stroke-width=\"20\">\n" + drawn.text() + "</g>\n" +
           all_words(seen, view) + "</svg>\n";
}

}  // namespace tamrix::cli
