// Runs with many faults at once that do not reach each other: what is found is compared with what can be seen, and
// counted fault by fault.
#pragma once

#include "seen_faults.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tamrix::tests {

struct outcome {
    selftest_result result = selftest_result::none;
    std::vector<finding> found{};
    std::vector<std::string> hazards{};
    std::vector<std::string> errors{};  // the statuses that begin so
};

/// One plug-in for all runs of a situation: to make one takes longer than most runs.
struct kept_bench {
    std::string name;
    std::unique_ptr<sim_bench> bench;
};
/// A run in which the person presses Continue at every wait.
outcome run(situation where, std::span<const single_fault> faults, bool output, kept_bench& kept);
/// On a plug-in of its own.
outcome run(const situation& where, std::span<const single_fault> faults, bool output);

/// It passes, finds nothing and makes no hazard.
void expect_sound(const situation& where, bool output);

/// What can fail at a pin in a System Test, one at a time.
inline constexpr fault_kind pin_faults_of_system_test[] = {
    fault_kind::vpp_dead,      fault_kind::vpp_on,    fault_kind::vcc_dead,  fault_kind::vcc_on,
    fault_kind::ground_dead,   fault_kind::ground_on, fault_kind::high_dead, fault_kind::high_on,
    fault_kind::low_dead,      fault_kind::low_on,    fault_kind::stuck_low, fault_kind::stuck_high,
    fault_kind::pull_down_dead};

/// Both routes and both generations; each once on models that are like another one.
std::vector<situation> situations_of(std::int16_t model);

struct tally {
    int tried = 0, seen = 0, told = 0;
    std::map<std::string, int> invisible{};
    kept_bench kept{};
};

/// `output`: of the Output Test, else of the System Test.
void expect_found(situation where, const std::vector<single_fault>& faults, bool output, tally& counts);

/// The page of counts has them; a row that it does not have is shown.
void expect_on_page(std::int16_t model, const std::string& test, const tally& counts);

}  // namespace tamrix::tests
