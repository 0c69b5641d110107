#include "chips/vectors.h"

#include "chips/redundancy.h"
#include "chips/vector_search.h"

#include <algorithm>

namespace tamrix::sim {
namespace {

constexpr std::size_t longest_record = 3000;  // what a reader keeps of a line
constexpr std::size_t most_counted = 254;
constexpr std::size_t most_inner_rows = 100;  // how far rows for inner faults go
constexpr std::size_t longest_inner = 13;

class vector_maker {
public:
    vector_maker(const std::string& name, std::shared_ptr<const circuit> plan)
        : plan_{std::move(plan)}, faults_{faults_of(*plan_)}, limit_{most_rows(plan_->pins.size())}, random_{name}
    {}

    vector_set make(const std::vector<rival>& rivals)
    {
        grow();
        shrink();
        look_inside();
        vector_set made;
        for (const auto& other : rivals)
            if (!tell_from(other)) made.twins.push_back(other.name);
        report(made);
        return made;
    }

private:
    run_state start() const { return {good_run{plan_}, faulty_runs{plan_, faults_}, {}}; }

    void grow()
    {
        auto state = start();
        vector_search{*plan_, limit_, random_}.extend(state, rows_, faults_.size(), 4);
        wanted_ = state.faulty.found_count();
    }

    /// Rows that find nothing new go: first many at once, then one by one.
    void shrink()
    {
        for (std::size_t count = 16; count > 0; count /= 2) {
            auto state = start();
            played_rows kept;
            for (std::size_t at = 0; at < rows_.size();) {
                if (rows_.size() > count && drop(state, kept, at, count)) continue;
                state.play(rows_.acts[at], kept);
                ++at;
            }
        }
    }

    bool drop(const run_state& before, const played_rows& kept, std::size_t at, std::size_t count)
    {
        auto state = before;
        auto rows = kept;
        for (auto i = at + count; i < rows_.size() && state.faulty.found_count() < wanted_; ++i)
            if (!state.play(rows_.acts[i], rows)) return false;
        if (state.faulty.found_count() < wanted_) return false;
        rows_ = std::move(rows);
        return true;
    }

    /// More rows, for what the pins alone do not ask for.
    void look_inside()
    {
        auto open = inner_faults_of(*plan_);
        run_state all{good_run{plan_}, faulty_runs{plan_, open}, {}};
        played_rows again;
        for (const auto& row : rows_.acts) all.play(row, again);
        std::vector<stuck_fault> rest;
        for (std::size_t i = 0; i < open.size(); ++i)
            if (!all.faulty.found(i)) rest.push_back(open[i]);
        run_state state{good_run{plan_}, faulty_runs{plan_, rest}, {}};
        again = {};
        for (const auto& row : rows_.acts) state.play(row, again);
        vector_search{*plan_, std::max(rows_.size(), std::min(limit_, most_inner_rows)), random_, longest_inner}.extend(
            state, again, rest.size(), 1);
        rows_ = std::move(again);
    }

    /// A chip with the same pins must not pass for this one: it is one more fault to be found.
    bool tell_from(const rival& other)
    {
        run_state state{good_run{plan_}, faulty_runs{other.plan, {stuck_fault{}}}, {}};
        played_rows again;
        for (const auto& row : rows_.acts) state.play(row, again);
        if (state.faulty.found(0)) return true;
        auto more = again;
        vector_search{*plan_, limit_, random_}.extend(state, more, 1, 1);
        if (!state.faulty.found(0)) return false;
        rows_ = std::move(more);
        return true;
    }

    void report(vector_set& made) const
    {
        faulty_runs final_runs{plan_, faults_};
        for (std::size_t i = 0; i < rows_.size(); ++i) final_runs.apply(rows_.acts[i], rows_.letters[i]);
        constexpr std::size_t supply_faults = 2 * 3;  // no supply, no answer
        made.pins = plan_->pins.size();
        made.rows = rows_.letters;
        made.faults = made.found = supply_faults;
        for (std::size_t i = 0; i < faults_.size(); ++i) {
            const std::size_t weight = faults_[i].high ? 2 : 1;  // high and open
            made.faults += weight;
            if (final_runs.found(i))
                made.found += weight;
            else
                made.missed.push_back({plan_->pins[faults_[i].pin].name, faults_[i].high, reason(faults_[i])});
        }
    }

    std::string reason(const stuck_fault& fault) const
    {
        const std::string_view other_level = fault.high ? "L0C" : "HZ1C";
        const auto shows = [&](const std::string& row) {
            return other_level.find(row[fault.pin]) != std::string_view::npos;
        };
        if (std::ranges::none_of(rows_.letters, shows))
            return std::string{"the pin does not go "} + (fault.high ? "low" : "high") + " within the " +
                   std::to_string(limit_) + " rows of a record";
        return why_missed(*plan_, fault, limit_);
    }

    std::shared_ptr<const circuit> plan_;
    std::vector<stuck_fault> faults_;
    std::size_t limit_, wanted_ = 0;
    random_source random_;
    played_rows rows_;
};

}  // namespace

std::size_t most_rows(std::size_t pins) { return std::min(most_counted, (longest_record - 21) / (pins + 1)); }

vector_set make_vectors(const std::string& name, const std::shared_ptr<const circuit>& plan,
                        const std::vector<rival>& rivals)
{
    return vector_maker{name, plan}.make(rivals);
}

}  // namespace tamrix::sim
