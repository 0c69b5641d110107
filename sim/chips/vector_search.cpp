#include "chips/vector_search.h"

#include <array>

namespace tamrix::sim {
namespace {

constexpr std::array<std::size_t, 10> lengths{1, 2, 3, 5, 8, 13, 21, 34, 68, 136};

enum manner : int { walk, jump, count_on, count_and_step, manners };

}  // namespace

row_acts vector_search::propose(const row_acts& last, int how, std::size_t position)
{
    if (last.empty()) return source_.fresh(random_);
    if (how == count_on && position > 1) return source_.again(last, random_);
    if (how == count_and_step && position > 1 && !random_.percent(20)) return source_.again(last, random_);
    if (how == jump && position == 0) {
        auto row = source_.fresh(random_);
        return row;
    }
    return source_.step(last, random_);
}

bool vector_search::try_row(run_state& state, int how, played_rows& rows)
{
    for (int tries = 0; tries < 6; ++tries) {
        const auto row =
            propose(state.last, how, rows.size() + static_cast<std::size_t>(tries > 3 ? 0 : 2 * (rows.size() > 0)));
        auto good = state.good;
        const auto letters = good.apply(row);
        if (!letters) continue;
        state.good = std::move(good);
        state.follow(row, *letters, rows);
        return true;
    }
    return false;
}

/// A sequence of at most `length` rows, cut after the last one that showed something new.
std::optional<vector_search::attempt> vector_search::try_rows(const run_state& from, std::size_t length)
{
    const auto how = static_cast<int>(random_.below(manners));
    auto state = from;
    played_rows rows;
    auto score = from.score();
    const auto before = score;
    std::optional<attempt> best;
    for (std::size_t i = 0; i < length && try_row(state, how, rows); ++i) {
        const auto reached = state.score();
        if (reached <= score) continue;
        score = reached;
        best = attempt{state, rows, score - before};
    }
    return best;
}

std::optional<vector_search::attempt> vector_search::best_of(const run_state& from, std::size_t length,
                                                             std::size_t attempts)
{
    std::optional<attempt> best;
    for (std::size_t i = 0; i < attempts; ++i) {
        auto made = try_rows(from, length);
        if (!made) continue;
        if (!best || made->gain * (best->rows.size() + 1) > best->gain * (made->rows.size() + 1))
            best = std::move(made);
    }
    return best;
}

void vector_search::extend(run_state& state, played_rows& rows, std::size_t wanted, int rounds)
{
    std::size_t level = 0;
    while (rounds > 0 && state.faulty.found_count() < wanted && rows.size() < most_rows_) {
        const auto room = most_rows_ - rows.size();
        auto best = best_of(state, std::min(lengths[level], room), lengths[level] < 30 ? 16 : 8);
        if (best) {
            state = std::move(best->state);
            rows.append(best->rows);
            level = 0;
        } else if (++level == lengths.size() || lengths[level] > longest_) {
            level = 0;
            --rounds;
        }
    }
}

}  // namespace tamrix::sim
