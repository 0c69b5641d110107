// Counters in every state that their flip-flops can have, also in those that no count reaches.
#include "state_judge.h"

#include <array>

namespace tamrix::tests {
namespace {

using sixteen = std::array<unsigned, 16>;

/// The state diagrams: the state after the next clock. Decades find back into the count from above 9.
constexpr sixteen decade_up{1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 11, 6, 13, 4, 15, 2};
constexpr sixteen decade_down{9, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14};
constexpr sixteen binary_up{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 0};
constexpr sixteen binary_down{15, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14};

const names q{"QD", "QC", "QB", "QA"}, data{"D", "C", "B", "A"};

bool rises(const std::string& name, const levels& now, const levels& was) { return now.at(name) && !was.at(name); }
bool falls(const std::string& name, const levels& now, const levels& was) { return !now.at(name) && was.at(name); }

/// A flip-flop after its clock.
bool jk(bool state, bool j, bool k) { return state ? !k : j; }

/// The three flip-flops of a count of five: the middle one is clocked by the first, which falls.
void clock_five(levels& now, const names& dcb)
{
    const bool d = now[dcb[0]], c = now[dcb[1]], b = now[dcb[2]];
    now[dcb[0]] = jk(d, c && b, d);
    now[dcb[2]] = jk(b, !d, true);
    if (b && !now[dcb[2]]) now[dcb[1]] = jk(c, true, true);
}

TEST(counter_states, a_count_of_five_finds_back_as_its_flip_flops_do)
{
    for (const std::string chip : {"7490", "74290"})
        judge({chip, q, {"CKA", "CKB", "R01", "R02", "R91", "R92"}, [](levels& now, const levels& was) {
                   if (falls("CKA", now, was)) now["QA"] = jk(now["QA"], true, true);
                   if (falls("CKB", now, was)) clock_five(now, {"QD", "QC", "QB"});
                   if (now["R01"] && now["R02"]) now.put(q, 0);
                   if (now["R91"] && now["R92"]) now.put(q, 9);
               }});
    for (const std::string half : {"1", "2"})
        judge({"74390",
               {half + "QD", half + "QC", half + "QB", half + "QA"},
               {half + "CKA", half + "CKB", half + "CLR"},
               [half](levels& now, const levels& was) {
                   if (falls(half + "CKA", now, was)) now[half + "QA"] = jk(now[half + "QA"], true, true);
                   if (falls(half + "CKB", now, was)) clock_five(now, {half + "QD", half + "QC", half + "QB"});
                   if (now[half + "CLR"]) now.put({half + "QD", half + "QC", half + "QB", half + "QA"}, 0);
               }});
    judge({"74196", q, {"CLK1", "CLK2", "CLR", "LOAD", "D", "C", "B", "A"}, [](levels& now, const levels& was) {
               if (falls("CLK1", now, was)) now["QA"] = jk(now["QA"], true, true);
               if (falls("CLK2", now, was)) clock_five(now, {"QD", "QC", "QB"});
               if (!now["LOAD"]) now.put(q, now.number(data));
               if (!now["CLR"]) now.put(q, 0);
           }});
}

TEST(counter_states, a_count_of_six_finds_back_as_its_flip_flops_do)
{
    judge({"7492", q, {"CKA", "CKB", "R01", "R02"}, [](levels& now, const levels& was) {
               if (falls("CKA", now, was)) now["QA"] = jk(now["QA"], true, true);
               if (falls("CKB", now, was)) {
                   const bool c = now["QC"], b = now["QB"];
                   now["QB"] = jk(b, !c, true);
                   now["QC"] = jk(c, b, true);
                   if (c && !now["QC"]) now["QD"] = jk(now["QD"], true, true);
               }
               if (now["R01"] && now["R02"]) now.put(q, 0);
           }});
}

/// `last`: the state that gives the carry.
chip_model of_the_160_family(const std::string& chip, const sixteen& next, unsigned last, bool clears_at_once)
{
    return {chip, q, {"CLR", "CLK", "ENP", "ENT", "LOAD", "D", "C", "B", "A"}, [=](levels& now, const levels& was) {
                if (rises("CLK", now, was)) {
                    if (!now["CLR"])
                        now.put(q, 0);
                    else if (!now["LOAD"])
                        now.put(q, now.number(data));
                    else if (now["ENP"] && now["ENT"])
                        now.put(q, next[now.number(q)]);
                }
                if (clears_at_once && !now["CLR"]) now.put(q, 0);
                now["RCO"] = now["ENT"] && now.number(q) == last;
            }};
}

TEST(counter_states, the_counters_with_one_direction_follow_their_state_diagram)
{
    judge(of_the_160_family("74160", decade_up, 9, true));
    judge(of_the_160_family("74161", binary_up, 15, true));
    judge(of_the_160_family("74162", decade_up, 9, false));
    judge(of_the_160_family("74163", binary_up, 15, false));
    for (const std::string chip : {"4518", "4520"}) {
        for (const std::string half : {"1", "2"}) {
            const names count{half + "Q4", half + "Q3", half + "Q2", half + "Q1"};
            const auto& next = chip == "4518" ? decade_up : binary_up;
            judge({chip, count, {half + "CLK", half + "EN", half + "RST"}, [=](levels& now, const levels& was) {
                       const auto clock = half + "CLK", enable = half + "EN";
                       if ((rises(clock, now, was) && now[enable]) || (falls(enable, now, was) && !now[clock]))
                           now.put(count, next[now.number(count)]);
                       if (now[half + "RST"]) now.put(count, 0);
                   }});
        }
    }
}

/// Upward a decade ends at each state with the first and the last digit set; it has no gate for the others.
bool at_end(const levels& now, const names& count, bool up, bool decade)
{
    const auto state = now.number(count);
    return up ? (state & (decade ? 9u : 15u)) == (decade ? 9u : 15u) : state == 0;
}

TEST(counter_states, the_74168_follows_its_state_diagram)
{
    for (const bool decade : {true, false})
        judge({decade ? "74168" : "74169",
               q,
               {"UD", "CLK", "ENP", "ENT", "LOAD", "D", "C", "B", "A"},
               [=](levels& now, const levels& was) {
                   const auto& up = decade ? decade_up : binary_up;
                   const auto& down = decade ? decade_down : binary_down;
                   if (rises("CLK", now, was)) {
                       if (!now["LOAD"])
                           now.put(q, now.number(data));
                       else if (!now["ENP"] && !now["ENT"])
                           now.put(q, (now["UD"] ? up : down)[now.number(q)]);
                   }
                   now["RCO"] = now["ENT"] || !at_end(now, q, now["UD"], decade);
               }});
}

TEST(counter_states, the_74190_follows_its_state_diagram)
{
    for (const bool decade : {true, false})
        judge({decade ? "74190" : "74191",
               q,
               {"CTEN", "DU", "LOAD", "CLK", "D", "C", "B", "A"},
               [=](levels& now, const levels& was) {
                   const auto& up = decade ? decade_up : binary_up;
                   const auto& down = decade ? decade_down : binary_down;
                   if (rises("CLK", now, was) && !now["CTEN"]) now.put(q, (now["DU"] ? down : up)[now.number(q)]);
                   if (!now["LOAD"]) now.put(q, now.number(data));
                   now["MAXMIN"] = at_end(now, q, !now["DU"], decade);
                   now["RCO"] = !now["MAXMIN"] || now["CTEN"] || now["CLK"];
               }});
}

TEST(counter_states, a_clock_of_the_74192_counts_only_while_the_other_is_high)
{
    for (const bool decade : {true, false})
        judge({decade ? "74192" : "74193",
               q,
               {"UP", "DOWN", "LOAD", "CLR", "D", "C", "B", "A"},
               [=](levels& now, const levels& was) {
                   const auto& up = decade ? decade_up : binary_up;
                   const auto& down = decade ? decade_down : binary_down;
                   if (rises("UP", now, was) && now["DOWN"]) now.put(q, up[now.number(q)]);
                   if (rises("DOWN", now, was) && now["UP"]) now.put(q, down[now.number(q)]);
                   if (!now["LOAD"]) now.put(q, now.number(data));
                   if (now["CLR"]) now.put(q, 0);
                   now["CO"] = now["UP"] || !at_end(now, q, true, decade);
                   now["BO"] = now["DOWN"] || now.number(q) != 0;
               }});
}

TEST(counter_states, the_4510_and_the_4029_follow_their_state_diagram)
{
    const names count{"Q4", "Q3", "Q2", "Q1"};
    const auto step = [count](levels& now, const levels& was, bool decade, const names& preset) {
        const auto& up = decade ? decade_up : binary_up;
        const auto& down = decade ? decade_down : binary_down;
        if (rises("CLK", now, was) && !now["CI"]) now.put(count, (now["UD"] ? up : down)[now.number(count)]);
        if (now["PE"]) now.put(count, now.number(preset));
        if (now["RST"]) now.put(count, 0);
        now["CO"] = now["CI"] || !at_end(now, count, now["UD"], decade);
    };
    const names p{"P4", "P3", "P2", "P1"}, j{"J4", "J3", "J2", "J1"};
    for (const bool decade : {true, false})
        judge({decade ? "4510" : "4516",
               count,
               {"PE", "CI", "UD", "RST", "CLK", "P4", "P3", "P2", "P1"},
               [=](levels& now, const levels& was) { step(now, was, decade, p); }});
    judge({"4029", count, {"PE", "CI", "UD", "BD", "CLK", "J4", "J3", "J2", "J1"}, [=](levels& now, const levels& was) {
               step(now, was, !now["BD"], j);
               now.erase("RST");
           }});
}

/// A ring of flip-flops that is filled with ones and then with zeros. The third takes a one only from two in a row,
/// so that stray ones go. An output looks at the two flip-flops where its pattern has an edge.
chip_model walking(const std::string& chip, const names& ring)
{
    return {chip, ring, {"CLK", "EN", "RST"}, [ring](levels& now, const levels& was) {
                const auto size = ring.size();
                if ((rises("CLK", now, was) && !now["EN"]) || (falls("EN", now, was) && now["CLK"])) {
                    for (std::size_t i = 1; i < size; ++i) now[ring[i]] = was.at(ring[i - 1]);
                    if (!was.at(ring[0]) && !was.at(ring[2])) now[ring[2]] = false;
                    now[ring[0]] = !was.at(ring[size - 1]);
                }
                if (now["RST"]) now.put(ring, 0);
                const bool first = now[ring[0]], last = now[ring[size - 1]];
                for (std::size_t i = 1; i < size; ++i) {
                    const bool left = now[ring[i - 1]], right = now[ring[i]];
                    now["Q" + std::to_string(i)] = left && !right;
                    now["Q" + std::to_string(size + i)] = !left && right;
                }
                now["Q0"] = !first && !last;
                now["Q" + std::to_string(size)] = first && last;
                now["CO"] = !last;
            }};
}

TEST(counter_states, the_rings_of_the_4017_and_the_4022_work_as_their_flip_flops_do)
{
    judge(walking("4017", {"q1", "q2", "q3", "q4", "q5"}));
    judge(walking("4022", {"q1", "q2", "q3", "q4"}));
}

TEST(counter_states, a_4017_has_one_output_high_again_within_eleven_clocks)
{
    const names ring{"q1", "q2", "q3", "q4", "q5"};
    for (unsigned state = 0; state < 32; ++state) {
        opened_chip chip{"4017"};
        levels from;
        from.put(ring, state);
        chip.start(from);
        for (int clock = 0; clock < 11; ++clock) {
            chip.change("CLK", true);
            chip.change("CLK", false);
        }
        int high = 0;
        for (char digit = '0'; digit <= '9'; ++digit) high += chip.at(std::string{'Q', digit}) ? 1 : 0;
        EXPECT_EQ(high, 1) << state;
    }
}

}  // namespace
}  // namespace tamrix::tests
