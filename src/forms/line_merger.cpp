#include "forms/line_merger.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace tamrix::forms {

line_merger::line_merger(int width, int height, std::function<void(const bar&)> pass_on) : pass_on_{std::move(pass_on)}
{
    rows_.at.resize(static_cast<std::size_t>(std::max(height, 0)));
    columns_.at.resize(static_cast<std::size_t>(std::max(width, 0)));
}

bool line_merger::add(point from, point to, colour ink)
{
    if (from.y == to.y) {
        add_run(rows_, columns_, from.y, {std::min(from.x, to.x), std::max(from.x, to.x), ink});
    } else if (from.x == to.x) {
        add_run(columns_, rows_, from.x, {std::min(from.y, to.y), std::max(from.y, to.y), ink});
    } else {
        return false;
    }
    return true;
}

/// Runs that wait and lie on one another have one colour, so it does not matter which of them is drawn first.
void line_merger::add_run(lines& along, lines& across, int at, run added)
{
    added.low = std::max(added.low, 0);
    added.high = std::min(added.high, static_cast<int>(across.at.size()) - 1);
    if (at < 0 || at >= static_cast<int>(along.at.size()) || added.low > added.high) return;
    waiting& here = along.at[static_cast<std::size_t>(at)];
    run* touched = nullptr;
    bool hidden = false;  // something of another colour is below it
    // Most lines of a dense diagram lie on the latest run or continue it.
    for (run& one : std::views::reverse(here.runs())) {
        if (one.low > added.high + 1 || added.low > one.high + 1) continue;
        if (one.ink == added.ink) {
            if (one.low <= added.low && added.high <= one.high) return;
            touched = &one;
        } else if (one.low <= added.high && added.low <= one.high) {
            hidden = true;
        }
    }
    if (touched != nullptr && !hidden) {
        if (added.low < touched->low) flush_crossed(across, at, {added.low, touched->low - 1, added.ink});
        if (touched->high < added.high) flush_crossed(across, at, {touched->high + 1, added.high, added.ink});
        touched->low = std::min(touched->low, added.low);
        touched->high = std::max(touched->high, added.high);
        return;
    }
    flush_crossed(across, at, added);
    if (hidden) flush_at(along, at);
    if (here.count == waiting::most) flush_at(along, at);
    if (here.count == 0) {
        along.used.push_back(at);
        here.first_ink = added.ink;
        here.other_inks = false;
    }
    if (here.first_ink != added.ink) here.other_inks = true;
    here.held[here.count++] = added;
}

/// What lies across and has another colour is drawn first.
void line_merger::flush_crossed(lines& across, int at, const run& added)
{
    const auto crossed = [&](int line) {
        const waiting& there = across.at[static_cast<std::size_t>(line)];
        if (there.count == 0 || (!there.other_inks && there.first_ink == added.ink)) return false;
        return std::ranges::any_of(
            there.runs(), [&](const run& one) { return one.ink != added.ink && one.low <= at && at <= one.high; });
    };
    // Whichever is less: the lines that the run lies across, or those that have runs.
    if (added.high - added.low < static_cast<int>(across.used.size())) {
        for (int line = added.low; line <= added.high; ++line)
            if (crossed(line)) flush_at(across, line);
        return;
    }
    for (std::size_t i = 0; i < across.used.size();) {
        const int line = across.used[i];
        if (line >= added.low && line <= added.high && crossed(line)) {
            flush_at(across, line);
        } else {
            ++i;
        }
    }
}

void line_merger::flush_at(lines& of, int at)
{
    waiting& here = of.at[static_cast<std::size_t>(at)];
    for (const run& one : here.runs()) pass_on(of, at, one);
    here.count = 0;
    std::erase(of.used, at);
}

void line_merger::pass_on(const lines& of, int at, const run& one) const
{
    if (&of == &rows_) {
        pass_on_({{one.low, at}, {one.high, at}, one.ink});
    } else {
        pass_on_({{at, one.low}, {at, one.high}, one.ink});
    }
}

void line_merger::flush()
{
    for (const int row : rows_.used) {
        waiting& here = rows_.at[static_cast<std::size_t>(row)];
        for (const run& one : here.runs()) pass_on(rows_, row, one);
        here.count = 0;
    }
    rows_.used.clear();
    flush_columns();
}

/// Equal runs of columns side by side are one bar.
void line_merger::flush_columns()
{
    std::vector<bar> open, next;
    std::ranges::sort(columns_.used);
    for (const int column : columns_.used) {
        next.clear();
        waiting& here = columns_.at[static_cast<std::size_t>(column)];
        for (const run& one : here.runs()) {
            const auto same = std::ranges::find_if(open, [&](const bar& before) {
                return before.last.x == column - 1 && before.ink == one.ink && before.first.y == one.low &&
                       before.last.y == one.high;
            });
            if (same == open.end()) {
                next.push_back({{column, one.low}, {column, one.high}, one.ink});
                continue;
            }
            next.push_back({same->first, {column, one.high}, one.ink});
            open.erase(same);
        }
        for (const bar& done : open) pass_on_(done);
        open.swap(next);
        here.count = 0;
    }
    for (const bar& done : open) pass_on_(done);
    columns_.used.clear();
}

}  // namespace tamrix::forms
