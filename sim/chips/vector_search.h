// Searches for rows that show what no row has shown yet.
#pragma once

#include "chips/row_source.h"

#include <functional>

namespace tamrix::sim {

/// Rows as the tester plays them and as the record spells them.
struct played_rows {
    std::vector<row_acts> acts;
    std::vector<std::string> letters;

    std::size_t size() const { return acts.size(); }
    void append(const played_rows& more)
    {
        acts.insert(acts.end(), more.acts.begin(), more.acts.end());
        letters.insert(letters.end(), more.letters.begin(), more.letters.end());
    }
};

/// How far a run has come: the good chip, and those that should fail.
struct run_state {
    good_run good;
    faulty_runs faulty;
    row_acts last;  // empty before row 0

    /// False if the row is refused; do not use the state after that.
    bool play(const row_acts& row, played_rows& into)
    {
        auto letters = good.apply(row);
        if (!letters) return false;
        follow(row, *letters, into);
        return true;
    }
    void follow(const row_acts& row, const std::string& letters, played_rows& into)
    {
        faulty.apply(row, letters);
        last = row;
        into.acts.push_back(row);
        into.letters.push_back(letters);
    }
    std::size_t score() const { return faulty.found_count() * 100 + faulty.failed_runs() + good.known_registers() * 5; }
};

class vector_search {
public:
    vector_search(const circuit& plan, std::size_t most_rows, random_source& random, std::size_t longest = 136)
        : source_{plan}, most_rows_{most_rows}, random_{random}, longest_{longest}
    {}

    /// Continues from `state` until `wanted` faults are found, or until all lengths of sequences have been tried
    /// `rounds` times without success.
    void extend(run_state& state, played_rows& rows, std::size_t wanted, int rounds);

private:
    struct attempt {
        run_state state;
        played_rows rows;
        std::size_t gain = 0;  // in score
    };
    std::optional<attempt> try_rows(const run_state& from, std::size_t length);
    bool try_row(run_state& state, int manner, played_rows& rows);
    row_acts propose(const row_acts& last, int manner, std::size_t position);
    std::optional<attempt> best_of(const run_state& from, std::size_t length, std::size_t attempts);

    row_source source_;
    std::size_t most_rows_;
    random_source& random_;
    std::size_t longest_;  // sequence to try
};

}  // namespace tamrix::sim
